#include "cli/commands/RenderSettings.h"

#include "cli/commands/OptionValues.h"
#include "host/Error.h"
#include "host/audio/Decibels.h"
#include "host/files/UserPath.h"
#include "host/text/Format.h"
#include "host/threads/ThreadTeam.h"

#include <algorithm>
#include <cmath>

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

// The largest level below full scale that 16 bits hold, or 24.
float largestLevel(SampleKind kind) {
    const int bits = kind == SampleKind::kInt16 ? 16 : 24;
    return 1.0F - std::ldexp(1.0F, 1 - bits);
}

void readPeak(const RenderOptions& options, RenderSettings& settings) {
    if (!options.normalize) {
        return;
    }
    const auto decibels = decibelsIn(*options.normalize);
    if (!decibels || *decibels > 0.0) {
        throw UsageError(formatText("--normalize takes -120 to 0 decibels, not '{}'{}",
                                    *options.normalize, decimalPointHint(*options.normalize)));
    }
    if (settings.gainDecibels != 0.0) {
        throw UsageError("--normalize sets the level of the mix, so leave out --gain");
    }
    settings.peakDecibels = *decibels;
    settings.peak = std::min(gainFactor(*decibels), largestLevel(settings.file.samples));
}

SongLayout layoutOption(const RenderOptions& options) {
    if (options.isSplit + options.isTogether + options.isRaw > 1) {
        throw UsageError("--split, --together and --raw exclude each other");
    }
    if (options.isRaw && !options.channels.empty()) {
        throw UsageError("--raw plays the whole file with one instrument, so leave out --channel");
    }
    if (options.isRaw && options.programs) {
        throw UsageError("--raw hands over program changes as they are, so leave out --programs");
    }
    if (options.isRaw) {
        return SongLayout::kRaw;
    }
    return options.isTogether ? SongLayout::kTogether : SongLayout::kSplit;
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
    settings.gainDecibels = decibelOption("--gain", options.gain);
    settings.gain = gainFactor(settings.gainDecibels);
    readPeak(options, settings);
    settings.isMono = options.isMono;
    settings.blocksDc = options.blocksDc;
    settings.tailSeconds = tailOption(options.tail);
    settings.threads = threadsOption(options.threads);
    settings.layout = layoutOption(options);
    settings.channels = parseChannels(options.channels);
    return settings;
}

} // namespace zelvatone
