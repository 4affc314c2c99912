// A colour with its opacity.
#pragma once

#include <cstdint>

namespace VSTGUI {

struct CColor {
    std::uint8_t red = 255;
    std::uint8_t green = 255;
    std::uint8_t blue = 255;
    std::uint8_t alpha = 255; // 255 covers, 0 shows nothing

    constexpr CColor() = default;
    constexpr CColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                     std::uint8_t alpha = 255)
        : red(red), green(green), blue(blue), alpha(alpha) {}

    constexpr bool operator==(const CColor&) const = default;
};

inline constexpr CColor kTransparentCColor{255, 255, 255, 0};
inline constexpr CColor kBlackCColor{0, 0, 0};
inline constexpr CColor kWhiteCColor{255, 255, 255};
inline constexpr CColor kRedCColor{255, 0, 0};

} // namespace VSTGUI
