// A short number for many values, to compare them between programs.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <string_view>

// Every bit of a value counts, but one NaN is as good as another. FNV-1a, a byte at a time.
class Fingerprint {
public:
    void add(float value) {
        addBytes(std::isnan(value) ? kNan : std::bit_cast<std::uint32_t>(value));
    }
    void add(double value) { addBytes(std::bit_cast<std::uint64_t>(value)); }
    void add(std::int32_t value) { addBytes(static_cast<std::uint32_t>(value)); }
    void add(std::string_view text) {
        for (const char c : text) {
            addBytes(static_cast<std::uint8_t>(c));
        }
        addBytes(std::uint8_t{0});
    }
    std::uint64_t value() const { return value_; }

private:
    static constexpr std::uint32_t kNan = 0x7FC00000;
    static constexpr std::uint64_t kPrime = 0x100000001B3;

    template<class Word>
    void addBytes(Word word) {
        for (std::size_t i = 0; i < sizeof word; ++i) {
            value_ = (value_ ^ (std::uint64_t{word} >> (8 * i) & 0xFFU)) * kPrime;
        }
    }

    std::uint64_t value_ = 0xCBF29CE484222325;
};
