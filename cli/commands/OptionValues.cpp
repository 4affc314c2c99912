#include "cli/commands/OptionValues.h"

#include "host/Error.h"
#include "host/audio/Decibels.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <algorithm>

namespace zelvatone {

namespace {

UsageError rangeError(std::string_view option, std::string_view range, const std::string& text) {
    return UsageError(
        formatText("{} takes {}, not '{}'{}", option, range, text, decimalPointHint(text)));
}

} // namespace

int wholeOption(std::string_view option, const std::string& text, int least, int most) {
    const auto number = wholeNumber(text);
    if (!number || *number < least || *number > most) {
        throw UsageError(formatText("{} takes a whole number from {} to {}, not '{}'", option,
                                    least, most, text));
    }
    return *number;
}

double realOption(std::string_view option, const std::string& text, double least, double most,
                  std::string_view range) {
    const auto number = realNumber(text);
    if (!number || *number < least || *number > most) {
        throw rangeError(option, range, text);
    }
    return *number;
}

double decibelOption(std::string_view option, const std::string& text) {
    const auto decibels = decibelsIn(text);
    if (!decibels) {
        throw rangeError(option, "-120 to 120 decibels", text);
    }
    return *decibels;
}

std::string decimalPointHint(std::string_view text) {
    std::string pointed(text);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    const bool isNumber = realNumber(pointed) || decibelsIn(pointed);
    return pointed != text && isNumber ? formatText("; write {}, with a point", pointed) : "";
}

} // namespace zelvatone
