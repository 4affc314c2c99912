#include "cli/commands/ChannelOptions.h"

#include "cli/commands/OptionValues.h"
#include "host/Error.h"
#include "host/audio/Decibels.h"
#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/text/Numbers.h"

namespace zelvatone {

namespace {

[[noreturn]] void fail(std::string_view what, std::string_view text) {
    throw UsageError(
        formatText("--channel takes {}, not '{}'{}", what, text, decimalPointHint(text)));
}

float parseLevel(std::string_view text) {
    const auto decibels = decibelsIn(text);
    if (!decibels) {
        fail("levels from -120dB to 120dB", text);
    }
    return gainFactor(*decibels);
}

} // namespace

ChannelChoice parseChannel(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        fail("CHANNEL=PROGRAM, CHANNEL=PROGRAM@LEVELdB or CHANNEL=off", text);
    }
    const auto channel = wholeNumber(text.substr(0, equals));
    if (!channel || *channel < 1 || *channel > 16) {
        fail("channels from 1 to 16", text.substr(0, equals));
    }
    const std::string_view choice = text.substr(equals + 1);
    if (equalInAnyCase(choice, "off")) {
        return {.channel = *channel, .program = {}, .gain = 0.0F, .isOff = true};
    }
    const std::size_t at = choice.rfind('@');
    const std::string program(choice.substr(0, at));
    if (program.empty()) {
        fail("CHANNEL=PROGRAM, CHANNEL=PROGRAM@LEVELdB or CHANNEL=off", text);
    }
    const float gain = at == std::string_view::npos ? 1.0F : parseLevel(choice.substr(at + 1));
    return {.channel = *channel, .program = program, .gain = gain};
}

std::map<int, ChannelChoice> parseChannels(const std::vector<std::string>& texts) {
    std::map<int, ChannelChoice> choices;
    for (const std::string& text : texts) {
        const ChannelChoice choice = parseChannel(text);
        if (!choices.emplace(choice.channel, choice).second) {
            throw UsageError(formatText("--channel names channel {} twice", choice.channel));
        }
    }
    return choices;
}

bool isPresetPath(std::string_view program) {
    constexpr std::string_view kExtension = ".fxp";
    return program.size() > kExtension.size() &&
           equalInAnyCase(program.substr(program.size() - kExtension.size()), kExtension);
}

} // namespace zelvatone
