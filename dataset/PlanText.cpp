#include "dataset/PlanText.h"

#include "dataset/InstrumentNames.h"
#include "formats/ParameterUnits.h"
#include "host/Error.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/Programs.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <string_view>

namespace zelvatone {

namespace {

std::vector<std::string> split(const std::string& text, char mark) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(mark, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

void sortUnique(std::vector<int>& numbers) {
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

// A value at a share of a parameter's range.
double unitsAt(const ParameterUnits& parameter, double share) {
    const auto low = static_cast<double>(parameter.min);
    return low + share * (static_cast<double>(parameter.max) - low);
}

bool isShare(std::optional<double> number) {
    return number && *number >= 0.0 && *number <= 1.0;
}

ValueRange wholeRange(const ParameterUnits& parameter) {
    return {parameter.index, parameter.min, parameter.max};
}

std::optional<ValueRange> rangeBetween(const ParameterUnits& parameter, const std::string& low,
                                       const std::string& high) {
    const auto lowNumber = realNumber(low);
    const auto highNumber = realNumber(high);
    if (isShare(lowNumber) && isShare(highNumber)) {
        return ValueRange{parameter.index, nearestValue(parameter, unitsAt(parameter, *lowNumber)),
                          nearestValue(parameter, unitsAt(parameter, *highNumber))};
    }
    const auto lowUnits = valueOfText(parameter, low);
    const auto highUnits = valueOfText(parameter, high);
    if (!lowUnits || !highUnits) {
        return std::nullopt;
    }
    return ValueRange{parameter.index, *lowUnits, *highUnits};
}

} // namespace

std::vector<int> numbersOf(std::string_view option, const std::string& text, int least, int most) {
    std::vector<int> numbers;
    for (const std::string& part : split(text, ',')) {
        const std::size_t hyphen = part.find('-');
        const auto low = wholeNumber(part.substr(0, hyphen));
        const auto high = hyphen == std::string::npos ? low : wholeNumber(part.substr(hyphen + 1));
        if (!low || !high || *low < least || *high > most || *low > *high) {
            throw UsageError(formatText("{} takes numbers and ranges from {} to {}, as {}-{},{}, "
                                        "not '{}'",
                                        option, least, most, least, least + 1, most, text));
        }
        for (int number = *low; number <= *high; ++number) {
            numbers.push_back(number);
        }
    }
    sortUnique(numbers);
    return numbers;
}

std::vector<int> programsOf(const std::string& text) {
    const std::vector<std::string>& names = factoryNames();
    std::vector<int> programs(names.size());
    std::iota(programs.begin(), programs.end(), 0);
    if (text == "all") {
        return programs;
    }
    programs.clear();
    for (const std::string& part : split(text, ',')) {
        try {
            programs.push_back(findProgram(names, part));
        } catch (const InputError& error) {
            if (wholeNumber(part)) {
                throw UsageError(error.what());
            }
            throw;
        }
    }
    sortUnique(programs);
    return programs;
}

std::vector<ValueRange> rangesOf(const std::string& text) {
    if (text == "all") {
        std::vector<ValueRange> ranges;
        for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
            ranges.push_back(wholeRange(parameter));
        }
        return ranges;
    }
    const std::size_t equals = text.find('=');
    const std::size_t colon = text.find(':', equals == std::string::npos ? text.size() : equals);
    if (equals == 0 || colon == std::string::npos) {
        throw UsageError(formatText("--vary takes NAME=LOW:HIGH or all, not '{}'", text));
    }
    const int index = findParameter(shownParameterNames(), text.substr(0, equals));
    const ParameterUnits& parameter = parameterUnits()[static_cast<std::size_t>(index)];
    const auto range = rangeBetween(parameter, text.substr(equals + 1, colon - equals - 1),
                                    text.substr(colon + 1));
    if (!range) {
        throw UsageError(formatText("--vary takes values from 0 to 1 or as {} shows them, '{}' to "
                                    "'{}', not '{}'",
                                    parameter.name, textOfValue(parameter, parameter.min),
                                    textOfValue(parameter, parameter.max),
                                    text.substr(equals + 1)));
    }
    if (range->low > range->high) {
        throw UsageError(formatText("--vary takes the lower value first, not '{}'", text));
    }
    return {*range};
}

ShardShare shareOf(const std::string& text) {
    const std::size_t slash = text.find('/');
    const auto part = wholeNumber(text.substr(0, slash));
    const auto parts =
        slash == std::string::npos ? std::nullopt : wholeNumber(text.substr(slash + 1));
    if (!part || !parts || *part < 1 || *part > *parts) {
        throw UsageError(
            formatText("--shard takes I/N, the I-th of N parts, as 1/4, not '{}'", text));
    }
    return {*part, *parts};
}

} // namespace zelvatone
