#include "params/DisplayText.h"

#include <array>
#include <charconv>

namespace zelvatone {

std::string fixedText(double value, int decimals) {
    // The longest text is that of the largest float times 100: a sign, 41 digits, a point and two
    // decimals.
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return {buffer.data(), result.ptr};
}

} // namespace zelvatone
