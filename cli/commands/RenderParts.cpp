#include "cli/commands/RenderParts.h"

#include "host/files/UserPath.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/ShownValue.h"
#include "host/render/Automation.h"
#include "host/text/FileNames.h"
#include "host/text/Format.h"

#include <algorithm>
#include <bitset>
#include <utility>

namespace zelvatone {

namespace {

constexpr int kSystemMessages = 0xF0; // they belong to no channel

// From 1; none for a message to the whole system.
std::optional<int> channelOf(const SongEvent& event) {
    const int status = event.bytes[0];
    return status < kSystemMessages ? std::optional((status & 0x0F) + 1) : std::nullopt;
}

// A velocity of 0 ends a note.
bool isNoteOn(const SongEvent& event) {
    constexpr int kKind = 0xF0;
    constexpr int kNoteOn = 0x90;
    return (event.bytes[0] & kKind) == kNoteOn && event.bytes[2] > 0;
}

PluginSetup channelSetup(const ChannelChoice& choice, const PluginSetup& setup) {
    PluginSetup own;
    own.settings = setup.settings;
    if (isPresetPath(choice.program)) {
        own.preset = readPresetFile(choice.program);
        return own;
    }
    own.program = choice.program;
    if (setup.preset && setup.preset->preset.isBank) {
        own.preset = setup.preset;
    }
    return own;
}

// The messages that a part receives. A message without a channel goes to every part.
EventSchedule::Filter receives(const PartPlan& plan, const std::map<int, ChannelChoice>& channels) {
    std::bitset<17> named; // channels count from 1
    for (const auto& [channel, choice] : channels) {
        named.set(static_cast<std::size_t>(channel));
    }
    return [own = plan.channel, named](const SongEvent& event) {
        const auto channel = channelOf(event);
        return !channel || (own ? *channel == *own : !named[static_cast<std::size_t>(*channel)]);
    };
}

std::vector<AutomationMove> readMoves(const std::string& file, HostedPlugin& plugin) {
    std::map<std::pair<int, std::string>, std::optional<float>> known; // a file may move one often
    const auto shown = [&](int parameter, std::string_view text) {
        const auto [value, isNew] = known.try_emplace({parameter, std::string(text)});
        if (isNew) {
            value->second = valueShownAs(plugin, parameter, text);
        }
        return value->second;
    };
    return readAutomation(userPath(file), parameterNames(plugin), shown);
}

} // namespace

std::vector<PartPlan> planParts(const Song& song, const std::map<int, ChannelChoice>& channels,
                                const PluginSetup& setup) {
    std::vector<PartPlan> plans;
    plans.reserve(channels.size() + 1);
    for (const auto& [channel, choice] : channels) {
        plans.push_back({channel, channelSetup(choice, setup), choice.gain});
    }
    const bool hasRest =
        std::any_of(song.events.begin(), song.events.end(), [&](const SongEvent& event) {
            const auto channel = channelOf(event);
            return channel && !channels.contains(*channel);
        });
    if (channels.empty() || hasRest) {
        plans.push_back({std::nullopt, setup, 1.0F});
    }
    return plans;
}

std::vector<int> silentChannels(const Song& song, const std::map<int, ChannelChoice>& channels) {
    std::bitset<17> playing; // channels count from 1
    for (const SongEvent& event : song.events) {
        if (isNoteOn(event)) {
            playing.set(static_cast<std::size_t>(*channelOf(event)));
        }
    }
    std::vector<int> silent;
    for (const auto& [channel, choice] : channels) {
        if (!playing[static_cast<std::size_t>(channel)]) {
            silent.push_back(channel);
        }
    }
    return silent;
}

std::vector<Part> makeParts(const std::vector<PartPlan>& plans, const PluginLibrary& library,
                            const Song& song, const RenderSettings& settings,
                            const std::optional<std::string>& automation) {
    const double rate = settings.stream.sampleRate;
    std::optional<AutomationSchedule> moves;
    std::vector<Part> parts;
    for (const PartPlan& plan : plans) {
        auto plugin = std::make_unique<HostedPlugin>(library, settings.stream);
        applySetup(*plugin, plan.setup);
        if (!moves) {
            moves = automation ? scheduleMoves(readMoves(*automation, *plugin), rate)
                               : AutomationSchedule();
        }
        auto player = std::make_unique<InstrumentPlayer>(
            *plugin, song, EventSchedule(song, rate, receives(plan, settings.channels)), *moves);
        const std::string name = stemName(plan.channel, plugin->text(effGetProgramName));
        parts.push_back({name, std::move(plugin), std::move(player), plan.gain * settings.gain});
    }
    return parts;
}

std::string stemName(const std::optional<int>& channel, const std::string& program) {
    return fileName(channel ? formatText("{:02}", *channel) : "rest", program);
}

} // namespace zelvatone
