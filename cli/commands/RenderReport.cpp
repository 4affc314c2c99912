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

} // namespace zelvatone
