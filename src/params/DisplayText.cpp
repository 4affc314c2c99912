#include "params/DisplayText.h"

#include <array>
#include <charconv>

namespace zelvatone {

std::string fixedText(double value, int decimals) {
    // Room for the largest double: a sign, 309 digits, a point and the decimals.
    std::array<char, 512> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return {buffer.data(), result.ptr};
}

} // namespace zelvatone
