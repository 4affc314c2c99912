// One bit for each mode of a voice.
#pragma once

#include "engine/ModeCount.h"

#include <array>
#include <cstdint>

namespace zelvatone {

// Plain words, mode 0 in the lowest bit of the first, so that vector code can read them as well.
struct ModeFlags {
    static constexpr std::int32_t kBitsPerWord = 32;

    bool test(std::int32_t mode) const {
        return (words[mode / kBitsPerWord] >> (mode % kBitsPerWord) & 1U) != 0;
    }
    void set(std::int32_t mode) {
        words[mode / kBitsPerWord] |= std::uint32_t{1} << (mode % kBitsPerWord);
    }
    void clear() { words.fill(0); }

    std::array<std::uint32_t, (kMaxModeCount + kBitsPerWord - 1) / kBitsPerWord> words{};
};

} // namespace zelvatone
