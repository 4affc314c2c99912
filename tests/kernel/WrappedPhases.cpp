#include "tests/kernel/WrappedPhases.h"

#include "tests/kernel/TestBank.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <numbers>

using namespace zelvatone;

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
// The nearest float to 2 pi is a whole number of units.
constexpr std::uint64_t kTurnUnits = 13176795;
constexpr double kUnit = 0x1p-21;

// 2^exponent modulo kTurnUnits.
std::uint64_t powerModuloTurn(std::int32_t exponent) {
    static const auto powers = [] {
        std::array<std::uint64_t, 128> list{1};
        for (std::size_t i = 1; i < list.size(); ++i) {
            list[i] = list[i - 1] * 2 % kTurnUnits;
        }
        return list;
    }();
    return powers[static_cast<std::size_t>(exponent)];
}

float wrappedInDoublePrecision(float phase) {
    const auto p = static_cast<double>(phase);
    if (p <= -kTwoPi || p >= 2.0 * kTwoPi) {
        return remainderInIntegers(phase);
    }
    return static_cast<float>(p < 0.0 ? p + kTwoPi : p > kTwoPi ? p - kTwoPi : p);
}

std::string complain(float phase, float actual) {
    char text[100];
    std::snprintf(text, sizeof text, "%a becomes %a instead of %a", static_cast<double>(phase),
                  static_cast<double>(actual),
                  static_cast<double>(wrappedInDoublePrecision(phase)));
    return text;
}

// Wraps the frequencies of `bank`, by adding each once to a phase of zero.
std::string wrapAndCheck(const ModeKernel& kernel, TestBank& bank) {
    const ModeArray phases = bank.freq;
    std::fill(bank.phase.begin(), bank.phase.end(), 0.0F);
    kernel.advance(bank.segment(), bank.constants);
    for (std::int32_t i = 0; i < bank.count; ++i) {
        const float expected = wrappedInDoublePrecision(phases[i] + 0.0F);
        if (std::bit_cast<std::uint32_t>(bank.phase[i]) != std::bit_cast<std::uint32_t>(expected)) {
            return complain(phases[i], bank.phase[i]);
        }
    }
    return {};
}

} // namespace

float remainderInIntegers(float phase) {
    const auto word = std::bit_cast<std::uint32_t>(std::fabs(phase));
    const std::int32_t exponent = static_cast<std::int32_t>(word >> 23U) - 127;
    const std::uint64_t digits = (word & 0x7FFFFFU) | 0x800000U;
    // The phase is digits * 2^(exponent - 23), which is digits * 2^(exponent - 2) units.
    const std::uint64_t units = digits * powerModuloTurn(exponent - 2) % kTurnUnits;
    return std::copysign(static_cast<float>(static_cast<double>(units) * kUnit), phase);
}

std::string firstWrongWrap(const ModeKernel& kernel, float from, float to, std::uint32_t stride) {
    TestBank bank(100);
    bank.turn(1.0F);
    const std::uint64_t end = std::bit_cast<std::uint32_t>(to);
    for (std::uint64_t word = std::bit_cast<std::uint32_t>(from); word <= end;) {
        for (std::int32_t i = 0; i < bank.count; i += 2, word += stride) {
            const auto phase =
                std::bit_cast<float>(static_cast<std::uint32_t>(std::min(word, end)));
            bank.freq[i] = phase;
            bank.freq[i + 1] = -phase;
        }
        std::string wrong = wrapAndCheck(kernel, bank);
        if (!wrong.empty()) {
            return wrong;
        }
    }
    return {};
}
