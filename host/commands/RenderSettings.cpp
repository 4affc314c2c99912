#include "commands/RenderSettings.h"

#include "Error.h"
#include "text/Numbers.h"

#include <cmath>

namespace zelvatone {

namespace {

// Hz. Below, speech is hard to follow; above, some of the file formats end.
constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 192000;
constexpr int kLargestBlock = 65536;   // samples; beyond any host's
constexpr double kLargestGain = 120.0; // dB up or down, the range of 20 bits
constexpr double kLongestTailSeconds = 600.0;

std::string rangeError(const std::string& option, const std::string& range,
                       const std::string& text) {
    return option + " takes " + range + ", not '" + text + "'";
}

int wholeOption(const std::string& option, const std::string& text, int least, int most) {
    const auto number = wholeNumber(text);
    if (!number || *number < least || *number > most) {
        throw UsageError(rangeError(
            option, "a whole number from " + std::to_string(least) + " to " + std::to_string(most),
            text));
    }
    return *number;
}

double realOption(const std::string& option, const std::string& text, double least, double most,
                  const std::string& range) {
    const auto number = realNumber(text);
    if (!number || *number < least || *number > most) {
        throw UsageError(rangeError(option, range, text));
    }
    return *number;
}

std::optional<double> tailOption(const std::string& text) {
    if (text == "auto") {
        return std::nullopt;
    }
    return realOption("--tail", text, 0.0, kLongestTailSeconds, "auto or 0 to 600 seconds");
}

} // namespace

RenderSettings renderSettings(const RenderOptions& options) {
    RenderSettings settings;
    const int rate = wholeOption("--rate", options.rate, kLowestRate, kHighestRate);
    settings.stream.sampleRate = rate;
    settings.stream.blockSize = wholeOption("--block", options.block, 1, kLargestBlock);
    settings.file.sampleRate = rate;
    settings.file.container = containerOf(options.output);
    settings.file.samples = sampleKindOf(options.format);
    checkFormat(settings.file);
    const double decibels =
        realOption("--gain", options.gain, -kLargestGain, kLargestGain, "-120 to 120 decibels");
    settings.gain = static_cast<float>(std::pow(10.0, decibels / 20.0));
    settings.tailSeconds = tailOption(options.tail);
    settings.parameters = parseSettings(options.plugin.settings);
    return settings;
}

} // namespace zelvatone
