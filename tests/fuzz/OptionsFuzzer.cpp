// What a user types behind the options of `zelvatone render`: a value a line.
#include "cli/commands/RenderSettings.h"
#include "cli/commands/SetupOptions.h"
#include "host/Error.h"
#include "tests/fuzz/Fuzzer.h"
#include "tests/fuzz/Lines.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace zelvatone::test {
namespace {

// The first lines are the single options; all that follow name channels.
RenderOptions optionsOf(std::vector<std::string> lines) {
    RenderOptions options;
    for (std::string* option : {&options.rate, &options.block, &options.format, &options.gain,
                                &options.tail, &options.threads, &options.output}) {
        if (!lines.empty()) {
            *option = lines.front();
            lines.erase(lines.begin());
        }
    }
    options.channels = lines;
    return options;
}

void checkSettings(const RenderSettings& settings) {
    require(settings.stream.sampleRate >= 8000.0 && settings.stream.sampleRate <= 192000.0,
            "the rate is one that is offered");
    require(settings.stream.blockSize >= 1, "a block has a sample");
    require(std::isfinite(settings.gain) && settings.gain > 0.0F, "the gain is a positive number");
    require(settings.threads >= 1, "there is a thread");
    require(!settings.tailSeconds ||
                (*settings.tailSeconds >= 0.0 && *settings.tailSeconds <= 600.0),
            "the tail ends");
    for (const auto& [channel, choice] : settings.channels) {
        require(channel == choice.channel && channel >= 1 && channel <= 16, "channels are 1 to 16");
        require(choice.isOff || !choice.program.empty(), "a channel has a program or is off");
        require(std::isfinite(choice.gain) && choice.gain > 0.0F, "a level is a positive number");
    }
}

// Runs `parse`, which may say in one way only that a value is no good.
template<typename Parse>
void attempt(const Parse& parse) {
    try {
        parse();
    } catch (const UsageError& error) {
        require(*error.what() != '\0', "an error says why");
    }
}

void checkEachLine(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        attempt([&] {
            const ParameterSetting setting = parseSetting(line);
            require(!setting.parameter.empty(), "a setting names a parameter");
            require(setting.value >= 0.0F && setting.value <= 1.0F, "a value is from 0 to 1");
        });
        attempt([&] { parseChannel(line); });
        attempt([&] { require(threadsOption(line) >= 1, "there is a thread"); });
    }
}

} // namespace
} // namespace zelvatone::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zelvatone::test;
    const auto lines = linesOf(textOf(data, size));
    checkEachLine(lines);
    attempt([&] { checkSettings(zelvatone::renderSettings(optionsOf(lines))); });
    return 0;
}
