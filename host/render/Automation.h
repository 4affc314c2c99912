// Knobs that move while a song plays.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

struct AutomationMove {
    double seconds; // from the start of the song
    int parameter;  // by index
    float value;    // normalised
};

// The normalised value that a parameter, by index, shows as `text`; none when it never does.
using ShownReader = std::function<std::optional<float>(int parameter, std::string_view text)>;

// Reads lines of "seconds, parameter, value" with the parameter as a name, one of `names`, or as a
// number, and the value from 0 to 1 or as `shown` reads it. Empty lines and those that begin with #
// are skipped, and so is a heading in the first line, in words without digits. Returns the moves by
// time, the file's order among equals. Throws InputError that names the file and the line.
std::vector<AutomationMove> readAutomation(const std::filesystem::path& path,
                                           const std::vector<std::string>& names,
                                           const ShownReader& shown = {});
// The same from memory; the error's text begins with the line's number.
std::vector<AutomationMove> parseAutomation(std::string_view text,
                                            const std::vector<std::string>& names,
                                            const ShownReader& shown = {});

struct ScheduledMove {
    std::int64_t frame; // from the start of the song
    int parameter;
    float value;
};

using AutomationSchedule = std::vector<ScheduledMove>;

// Each move at the sample nearest to its time.
AutomationSchedule scheduleMoves(const std::vector<AutomationMove>& moves, double sampleRate);

} // namespace zelvatone
