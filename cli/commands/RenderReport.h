// What a rendering came to, in a line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zelvatone {

struct RenderReport {
    double seconds = 0.0;       // of sound
    double renderSeconds = 0.0; // of work
    double peakDecibels = 0.0;  // full scale is 0
    std::int64_t clippedSamples = 0;
    std::int64_t brokenSamples = 0; // NaN or infinite; silenced
    bool isEndless = false;         // it sounded on, and was faded out
};

// "12.5 x real time".
std::string speedText(double soundSeconds, double renderSeconds);
// "1:03.250", or "12.500 s" below a minute.
std::string lengthText(double seconds);
// These have a line end.
std::string closingLine(const std::string& file, const RenderReport& report);
// Of a stem that clips.
std::string stemLine(const std::string& file, std::int64_t clippedSamples);
// With which value of a level's option nothing clips, when it has a value of `decibels` now and the
// loudest file that clips a peak of `peakDecibels`; empty for -infinity.
std::string adviceLine(std::string_view option, double decibels, double peakDecibels);
// That the sound was faded out, for that many notes of the song without an end.
std::string endlessLine(int endlessNotes);
// That channel 10 was left out, and how to hear it.
std::string drumsLine();

} // namespace zelvatone
