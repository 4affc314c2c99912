#include "params/DisplayText.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace zelvatone {

std::string fixedText(double value, int decimals) {
    // Room for the largest double: a sign, 309 digits, a point and the decimals.
    std::array<char, 512> buffer{};
#ifdef __cpp_lib_to_chars
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return {buffer.data(), result.ptr};
#else // in a browser, which has no locales and to which that function's tables would have to go
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
    return buffer.data();
#endif
}

} // namespace zelvatone
