#include "cli/commands/RenderReport.h"

#include "host/text/Numbers.h"

#include <cmath>

namespace zelvatone {

namespace {

std::string peakText(double decibels) {
    return std::isfinite(decibels) ? "peak " + fixedPoint(decibels, 1) + " dBFS" : "silent";
}

std::string clippedText(std::int64_t samples) {
    return samples == 1 ? "1 clipped sample"
                        : (samples == 0 ? "no" : std::to_string(samples)) + " clipped samples";
}

} // namespace

std::string speedText(double soundSeconds, double renderSeconds) {
    // A clock that has not moved yet says nothing about the speed.
    return renderSeconds > 0.0 ? fixedPoint(soundSeconds / renderSeconds, 1) + " x real time" : "";
}

std::string lengthText(double seconds) {
    constexpr std::int64_t msPerMinute = 60000;
    const std::int64_t ms = std::llround(seconds * 1000.0);
    const std::string rest = fixedPoint(static_cast<double>(ms % msPerMinute) / 1000.0, 3);
    if (ms < msPerMinute) {
        return rest + " s";
    }
    return std::to_string(ms / msPerMinute) + ":" + (rest.size() < 6 ? "0" : "") + rest;
}

std::string closingLine(const std::string& file, const RenderReport& report) {
    std::string line = file + ": " + lengthText(report.seconds) + ", " +
                       peakText(report.peakDecibels) + ", " + clippedText(report.clippedSamples);
    if (report.brokenSamples != 0) {
        line += ", " + std::to_string(report.brokenSamples) + " samples were no numbers (silenced)";
    }
    const std::string speed = speedText(report.seconds, report.renderSeconds);
    return line + (speed.empty() ? "" : ", " + speed) + "\n";
}

} // namespace zelvatone
