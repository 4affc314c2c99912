// Random choices that are the same on every platform for one seed.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>

class Random {
public:
    explicit Random(std::uint64_t seed) : bits_(seed) {}

    // 0 to count - 1.
    std::int32_t below(std::int32_t count) {
        return static_cast<std::int32_t>(bits_() % static_cast<std::uint64_t>(count));
    }
    std::int32_t between(std::int32_t lowest, std::int32_t highest) {
        return lowest + below(highest - lowest + 1);
    }
    // 0 to just under 1.
    float fraction() { return static_cast<float>(bits_() >> 40U) * 0x1p-24F; }
    bool oneIn(std::int32_t chances) { return below(chances) == 0; }
    template<class Value>
    Value oneOf(std::initializer_list<Value> values) {
        return *(values.begin() + below(static_cast<std::int32_t>(values.size())));
    }
    std::uint32_t word() { return static_cast<std::uint32_t>(bits_()); }

private:
    std::mt19937_64 bits_;
};
