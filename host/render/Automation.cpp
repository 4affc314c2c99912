#include "host/render/Automation.h"

#include "host/Error.h"
#include "host/files/CsvLine.h"
#include "host/plugin/ParameterLookup.h"
#include "host/render/EventSchedule.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

constexpr double kLatestSeconds = 24.0 * 60.0 * 60.0; // no song is longer than a day

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

class MoveReader {
public:
    MoveReader(const std::vector<std::string>& names, const ShownReader& shown)
        : names_(names), shown_(shown) {}

    void take(std::string_view line) {
        const Fields fields = csvFields(line);
        checkSeparators(fields, line);
        if (!mayBeHeading_ || !isHeading(fields)) {
            moves_.push_back(parseMove(fields, names_, shown_, mayBeHeading_));
        }
        mayBeHeading_ = false;
    }

    std::vector<AutomationMove> moves() {
        std::stable_sort(moves_.begin(), moves_.end(),
                         [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
        return std::move(moves_);
    }

private:
    const std::vector<std::string>& names_;
    const ShownReader& shown_;
    std::vector<AutomationMove> moves_;
    bool mayBeHeading_ = true;
};

} // namespace

std::vector<AutomationMove> parseAutomation(std::string_view text,
                                            const std::vector<std::string>& names,
                                            const ShownReader& shown) {
    MoveReader reader(names, shown);
    readCsvLines(text, [&](std::string_view line) { reader.take(line); });
    return reader.moves();
}

std::vector<AutomationMove> readAutomation(const std::filesystem::path& path,
                                           const std::vector<std::string>& names,
                                           const ShownReader& shown) {
    MoveReader reader(names, shown);
    readCsvFile(path, "file of moves", [&](std::string_view line) { reader.take(line); });
    return reader.moves();
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
