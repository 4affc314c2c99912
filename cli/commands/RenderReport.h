// What a rendering came to, in a line.
#pragma once

#include <cstdint>
#include <string>

namespace zelvatone {

struct RenderReport {
    double seconds = 0.0;       // of sound
    double renderSeconds = 0.0; // of work
    double peakDecibels = 0.0;  // full scale is 0
    std::int64_t clippedSamples = 0;
    std::int64_t brokenSamples = 0; // NaN or infinite; silenced
};

// "12.5 x real time".
std::string speedText(double soundSeconds, double renderSeconds);
// "1:03.250", or "12.500 s" below a minute.
std::string lengthText(double seconds);
// With a line end.
std::string closingLine(const std::string& file, const RenderReport& report);

} // namespace zelvatone
