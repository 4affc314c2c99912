#include "dataset/Philox.h"

namespace zelvatone {

namespace {

// All constants are those of the publication.
constexpr int kRounds = 10;
constexpr std::uint64_t kFirstFactor = 0xD2511F53;
constexpr std::uint64_t kSecondFactor = 0xCD9E8D57;
constexpr std::uint32_t kFirstKeyStep = 0x9E3779B9;  // of the golden ratio
constexpr std::uint32_t kSecondKeyStep = 0xBB67AE85; // of the square root of 3

std::uint32_t highOf(std::uint64_t product) {
    return static_cast<std::uint32_t>(product >> 32U);
}

std::uint32_t lowOf(std::uint64_t product) {
    return static_cast<std::uint32_t>(product);
}

} // namespace

PhiloxBlock philox(PhiloxBlock counter, PhiloxKey key) {
    for (int round = 0; round < kRounds; ++round) {
        const std::uint64_t first = kFirstFactor * counter[0];
        const std::uint64_t second = kSecondFactor * counter[2];
        counter = {highOf(second) ^ counter[1] ^ key[0], lowOf(second),
                   highOf(first) ^ counter[3] ^ key[1], lowOf(first)};
        key = {key[0] + kFirstKeyStep, key[1] + kSecondKeyStep};
    }
    return counter;
}

} // namespace zelvatone
