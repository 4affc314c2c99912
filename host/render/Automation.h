// Knobs that move while a song plays.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

struct AutomationMove {
    double seconds; // from the start of the song
    int parameter;  // by index
    float value;    // normalised
};

// Reads lines of "seconds, parameter, value" with the parameter as a name, one of `names`, or as a
// number. Empty lines and those that begin with # are skipped, and so is a heading in the first
// line, in words without digits. Returns the moves by time, the file's order among equals. Throws
// InputError that names the file and the line.
std::vector<AutomationMove> readAutomation(const std::filesystem::path& path,
                                           const std::vector<std::string>& names);
// The same from memory; the error's text begins with the line's number.
std::vector<AutomationMove> parseAutomation(std::string_view text,
                                            const std::vector<std::string>& names);

struct ScheduledMove {
    std::int64_t frame; // from the start of the song
    int parameter;
    float value;
};

using AutomationSchedule = std::vector<ScheduledMove>;

// Each move at the sample nearest to its time.
AutomationSchedule scheduleMoves(const std::vector<AutomationMove>& moves, double sampleRate);

} // namespace zelvatone
