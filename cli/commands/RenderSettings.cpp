#include "cli/commands/RenderSettings.h"

#include "cli/commands/OptionValues.h"
#include "host/audio/Decibels.h"
#include "host/files/UserPath.h"
#include "host/threads/ThreadTeam.h"

namespace zelvatone {

namespace {

// Hz. Below, speech is hard to follow; above, some of the file formats end.
constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 192000;
constexpr int kLargestBlock = 65536; // samples; beyond any host's
constexpr int kMostThreads = 64;     // one a channel is enough; more than that is a slip
constexpr double kLongestTailSeconds = 600.0;

std::optional<double> tailOption(const std::string& text) {
    if (text == "auto") {
        return std::nullopt;
    }
    return realOption("--tail", text, 0.0, kLongestTailSeconds, "auto or 0 to 600 seconds");
}

} // namespace

int threadsOption(const std::string& text) {
    return text == "auto" ? machineThreads() : wholeOption("--threads", text, 1, kMostThreads);
}

RenderSettings renderSettings(const RenderOptions& options) {
    RenderSettings settings;
    const int rate = wholeOption("--rate", options.rate, kLowestRate, kHighestRate);
    settings.stream.sampleRate = rate;
    settings.stream.blockSize = wholeOption("--block", options.block, 1, kLargestBlock);
    settings.file.sampleRate = rate;
    settings.file.container = containerOf(userPath(options.output));
    settings.file.samples = sampleKindOf(options.format);
    checkFormat(settings.file);
    settings.gain = gainFactor(decibelOption("--gain", options.gain));
    settings.tailSeconds = tailOption(options.tail);
    settings.threads = threadsOption(options.threads);
    settings.channels = parseChannels(options.channels);
    return settings;
}

} // namespace zelvatone
