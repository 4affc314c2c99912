#include "dataset/FlacChecksum.h"

#include <array>
#include <cstddef>

namespace zelvatone {

namespace {

constexpr std::size_t kAtOnce = 16; // bytes whose sums are looked up side by side

using Table = std::array<std::uint16_t, 256>;

// What a byte adds to the sum when 0 to kAtOnce - 1 others follow it.
constexpr std::array<Table, kAtOnce> makeTables() {
    constexpr std::uint32_t kPolynomial = 0x8005;
    std::array<Table, kAtOnce> tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte << 8U;
        for (Table& table : tables) {
            for (int bit = 0; bit < 8; ++bit) {
                sum = ((sum << 1U) ^ ((sum & 0x8000U) != 0 ? kPolynomial : 0U)) & 0xFFFFU;
            }
            table[byte] = static_cast<std::uint16_t>(sum);
        }
    }
    return tables;
}

constexpr std::array<Table, kAtOnce> kTables = makeTables();

std::uint32_t byteAt(std::span<const char> bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes[at]);
}

} // namespace

std::uint8_t flacHeaderSum(std::span<const char> bytes) {
    constexpr std::uint32_t kPolynomial = 0x07;
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        sum ^= byteAt(bytes, i);
        for (int bit = 0; bit < 8; ++bit) {
            sum = ((sum << 1U) ^ ((sum & 0x80U) != 0 ? kPolynomial : 0U)) & 0xFFU;
        }
    }
    return static_cast<std::uint8_t>(sum);
}

std::uint16_t flacFrameSum(std::span<const char> bytes) {
    std::uint32_t sum = 0;
    std::size_t at = 0;
    for (; at + kAtOnce <= bytes.size(); at += kAtOnce) {
        std::uint32_t next = kTables[kAtOnce - 1][byteAt(bytes, at) ^ (sum >> 8U)] ^
                             kTables[kAtOnce - 2][byteAt(bytes, at + 1) ^ (sum & 0xFFU)];
        for (std::size_t i = 2; i < kAtOnce; ++i) {
            next ^= kTables[kAtOnce - 1 - i][byteAt(bytes, at + i)];
        }
        sum = next;
    }
    for (; at < bytes.size(); ++at) {
        sum = ((sum << 8U) & 0xFFFFU) ^ kTables[0][byteAt(bytes, at) ^ (sum >> 8U)];
    }
    return static_cast<std::uint16_t>(sum);
}

} // namespace zelvatone
