#include "cli/commands/RenderReport.h"

#include "host/plugin/PluginText.h"
#include "host/text/Format.h"

#include <cmath>

namespace zelvatone {

namespace {

std::string peakText(double decibels) {
    return std::isfinite(decibels) ? formatText("peak {:.1f} dBFS", decibels) : "silent";
}

std::string clippedText(std::int64_t samples) {
    if (samples == 0) {
        return "no clipped samples";
    }
    return formatText("{} clipped {}", samples, samples == 1 ? "sample" : "samples");
}

} // namespace

std::string speedText(double soundSeconds, double renderSeconds) {
    // A clock that has not moved yet says nothing about the speed.
    return renderSeconds > 0.0 ? formatText("{:.1f} x real time", soundSeconds / renderSeconds)
                               : "";
}

std::string lengthText(double seconds) {
    constexpr std::int64_t kMsPerMinute = 60000;
    const std::int64_t ms = std::llround(seconds * 1000.0);
    const double rest = static_cast<double>(ms % kMsPerMinute) / 1000.0;
    return ms < kMsPerMinute ? formatText("{:.3f} s", rest)
                             : formatText("{}:{:06.3f}", ms / kMsPerMinute, rest);
}

std::string closingLine(const std::string& file, const RenderReport& report) {
    std::string line =
        formatText("{}: {}, {}, {}", cleanText(file), lengthText(report.seconds),
                   peakText(report.peakDecibels), clippedText(report.clippedSamples));
    if (report.brokenSamples != 0) {
        line += formatText(", {} samples were NaN or infinite (silenced)", report.brokenSamples);
    }
    const std::string speed = speedText(report.seconds, report.renderSeconds);
    return line + (speed.empty() ? "\n" : formatText(", {}\n", speed));
}

std::string stemLine(const std::string& file, std::int64_t clippedSamples) {
    return formatText("{}: {}\n", cleanText(file), clippedText(clippedSamples));
}

std::string adviceLine(std::string_view option, double decibels, double peakDecibels) {
    if (!std::isfinite(peakDecibels)) {
        return {};
    }
    // The largest positive sample of 16 bits is this far below full scale.
    constexpr double kLastStepDecibels = 0.0003;
    const double enough = decibels - peakDecibels - kLastStepDecibels;
    return formatText("nothing clips with {} {:.1f}\n", option, std::floor(enough * 10.0) / 10.0);
}

std::string endlessLine(int endlessNotes) {
    const std::string cause =
        endlessNotes == 0
            ? "the sound does not end"
            : formatText("{} of the song {}",
                         endlessNotes == 1 ? "1 note" : formatText("{} notes", endlessNotes),
                         endlessNotes == 1 ? "does not end" : "do not end");
    return cause + ": faded out half a minute after the end of the song\n";
}

std::string drumsLine() {
    return "channel 10 (drums) is left out; --channel 10=PROGRAM plays it\n";
}

} // namespace zelvatone
