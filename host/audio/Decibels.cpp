#include "host/audio/Decibels.h"

#include "host/text/Names.h"
#include "host/text/Numbers.h"

namespace zelvatone {

std::optional<double> decibelsIn(std::string_view text) {
    constexpr std::string_view kUnit = "dB";
    std::string_view number = text;
    if (number.size() >= kUnit.size() &&
        equalInAnyCase(number.substr(number.size() - kUnit.size()), kUnit)) {
        number = cleanEnd(number.substr(0, number.size() - kUnit.size()));
    }
    // The standard library reads a minus, but no plus.
    if (number.size() >= 2 && number[0] == '+' && number[1] != '-') {
        number.remove_prefix(1);
    }
    const auto decibels = realNumber(number);
    return decibels && std::abs(*decibels) <= kLargestGain ? decibels : std::nullopt;
}

} // namespace zelvatone
