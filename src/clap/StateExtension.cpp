// The session's part of the instrument.
#include "clap/ClapPlugin.h"
#include "clap/PluginExtensions.h"

#include "formats/InstrumentState.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

namespace {

// Hosts may take a few bytes at a time.
bool save(const clap::Plugin* plugin, const clap::OutputStream* stream) noexcept {
    const std::string text = textOfState(ClapPlugin::of(plugin).instrument().state());
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::int64_t written = stream->write(stream, rest.data(), rest.size());
        if (written <= 0 || written > static_cast<std::int64_t>(rest.size())) {
            return false;
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// All bytes up to the end, as far as a state may go and one more; none after an error.
std::optional<std::string> readAll(const clap::InputStream& stream) {
    std::string text;
    while (text.size() <= kMostStateBytes) {
        std::array<char, 512> bytes{};
        const std::int64_t count = stream.read(&stream, bytes.data(), bytes.size());
        if (count < 0 || count > static_cast<std::int64_t>(bytes.size())) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        text.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return text;
}

bool load(const clap::Plugin* plugin, const clap::InputStream* stream) noexcept {
    const std::optional<std::string> text = readAll(*stream);
    const std::optional<InstrumentState> state = text ? stateOfText(*text) : std::nullopt;
    if (!state) {
        return false;
    }
    ClapPlugin& object = ClapPlugin::of(plugin);
    object.instrument().setState(*state);
    object.host().valuesHaveChanged();
    return true;
}

} // namespace

const clap::PluginState kStateExtension{.save = save, .load = load};

} // namespace zelvatone
