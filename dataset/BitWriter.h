// Numbers of any count of bits, one after the other.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zelvatone {

// Writes the highest bit of each number first. Eight bytes more than the bits need are written to.
class BitWriter {
public:
    explicit BitWriter(char* to) : at_(to) {}

    // The lower `count` bits of `value`, whose others are 0; `count` from 1 to 57.
    void put(std::uint64_t value, int count) {
        bits_ = bits_ << count | value;
        count_ += count;
        std::uint64_t bytes = bits_ << (64 - count_);
        if constexpr (std::endian::native == std::endian::little) {
            bytes = __builtin_bswap64(bytes);
        }
        std::memcpy(at_, &bytes, sizeof bytes);
        at_ += count_ / 8;
        count_ %= 8;
    }
    // Up to the next whole byte with 0. Returns the byte after it.
    char* align() {
        if (count_ > 0) {
            put(0, 8 - count_);
        }
        return at_;
    }

private:
    char* at_;               // of the first byte that is not full
    std::uint64_t bits_ = 0; // the last that were put, of which the lowest are not in a full byte
    int count_ = 0;          // how many these are, 0 to 7
};

} // namespace zelvatone
