#include "host/render/Automation.h"

#include "host/Error.h"
#include "host/files/CsvLine.h"
#include "host/files/FileBytes.h"
#include "host/plugin/ParameterLookup.h"
#include "host/render/EventSchedule.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <algorithm>

namespace zelvatone {

namespace {

constexpr std::size_t kLargestFile = 64U << 20U;      // a move for every sample of half a minute
constexpr double kLatestSeconds = 24.0 * 60.0 * 60.0; // no song is longer than a day
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // that some programs begin texts with

using Fields = std::vector<std::string>;

bool hasDigit(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos;
}

// Words alone: a move with a slip in its numbers must not pass for a heading.
bool isHeading(const Fields& fields) {
    return fields.size() == 3 && !hasDigit(fields[0]) && !hasDigit(fields[2]);
}

// Throws InputError for numbers and fields as they are written where the decimal sign is a comma.
void checkSeparators(const Fields& fields, std::string_view line) {
    constexpr std::size_t kFields = 3;
    if (fields.size() < kFields && line.find(';') != std::string_view::npos) {
        throw InputError("semicolons between the fields; write commas, and numbers with a point");
    }
    if (fields.size() > kFields && realNumber(fields[1])) {
        throw InputError(formatText("{} fields; write numbers with a point: {}.{}", fields.size(),
                                    fields[0], fields[1]));
    }
}

float parseValue(const std::string& field, int parameter, const std::vector<std::string>& names,
                 const ShownReader& shown) {
    const auto number = realNumber(field);
    if (number && *number >= 0.0 && *number <= 1.0) {
        return static_cast<float>(*number);
    }
    const auto value = shown && !field.empty() ? shown(parameter, field) : std::nullopt;
    if (!value) {
        throw InputError(formatText("'{}' is not a value from 0 to 1 or as {} shows it", field,
                                    names[static_cast<std::size_t>(parameter)]));
    }
    return *value;
}

AutomationMove parseMove(const Fields& fields, const std::vector<std::string>& names,
                         const ShownReader& shown, bool isFirst) {
    if (fields.size() != 3) {
        throw InputError(formatText("a move has three fields (seconds, parameter, value), not {}",
                                    fields.size()));
    }
    const auto seconds = realNumber(fields[0]);
    if (!seconds || *seconds < 0.0 || *seconds > kLatestSeconds) {
        throw InputError(formatText("'{}' is not a time: seconds, from 0 to a day{}", fields[0],
                                    isFirst && !seconds ? "; a heading has no digits" : ""));
    }
    const int parameter = findParameter(names, fields[1]);
    return {*seconds, parameter, parseValue(fields[2], parameter, names, shown)};
}

// Takes a line off the front of `text`.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

bool isSkipped(std::string_view line) {
    const std::size_t start = line.find_first_not_of(" \t\r");
    return start == std::string_view::npos || line[start] == '#';
}

} // namespace

std::vector<AutomationMove> parseAutomation(std::string_view text,
                                            const std::vector<std::string>& names,
                                            const ShownReader& shown) {
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        text.remove_prefix(kByteOrderMark.size());
    }
    std::vector<AutomationMove> moves;
    bool mayBeHeading = true;
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view line = takeLine(text);
        if (isSkipped(line)) {
            continue;
        }
        try {
            const Fields fields = csvFields(line);
            checkSeparators(fields, line);
            if (!mayBeHeading || !isHeading(fields)) {
                moves.push_back(parseMove(fields, names, shown, mayBeHeading));
            }
        } catch (const InputError& error) {
            throw InputError(formatText("{}: {}", number, error.what()));
        }
        mayBeHeading = false;
    }
    std::stable_sort(moves.begin(), moves.end(),
                     [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
    return moves;
}

std::vector<AutomationMove> readAutomation(const std::filesystem::path& path,
                                           const std::vector<std::string>& names,
                                           const ShownReader& shown) {
    std::vector<std::uint8_t> bytes;
    try {
        bytes = readBytes(path, kLargestFile, "file of moves");
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", path.string(), error.what()));
    }
    try {
        return parseAutomation({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, names,
                               shown);
    } catch (const InputError& error) {
        throw InputError(formatText("{}:{}", path.string(), error.what()));
    }
}

AutomationSchedule scheduleMoves(const std::vector<AutomationMove>& moves, double sampleRate) {
    AutomationSchedule schedule;
    schedule.reserve(moves.size());
    for (const AutomationMove& move : moves) {
        schedule.push_back({frameAt(move.seconds, sampleRate), move.parameter, move.value});
    }
    return schedule;
}

} // namespace zelvatone
