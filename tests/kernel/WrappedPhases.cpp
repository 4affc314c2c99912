#include "tests/kernel/WrappedPhases.h"

#include "tests/kernel/TestBank.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <numbers>

using namespace zelvatone;

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kNearestFloatToTwoPi = 6.2831854820251465;

float wrappedInDoublePrecision(float phase) {
    const auto p = static_cast<double>(phase);
    if (p <= -kTwoPi || p >= 2.0 * kTwoPi) {
        return static_cast<float>(std::fmod(p, kNearestFloatToTwoPi));
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
    kernel.advance(bank.view(), bank.constants);
    for (std::int32_t i = 0; i < bank.count; ++i) {
        const float expected = wrappedInDoublePrecision(phases[i] + 0.0F);
        if (std::bit_cast<std::uint32_t>(bank.phase[i]) != std::bit_cast<std::uint32_t>(expected)) {
            return complain(phases[i], bank.phase[i]);
        }
    }
    return {};
}

} // namespace

std::string firstWrongWrap(const ModeKernel& kernel, float from, float to, std::uint32_t stride) {
    TestBank bank(100);
    bank.constants.radiansPerHz = 1.0F;
    const std::uint64_t end = std::bit_cast<std::uint32_t>(to);
    for (std::uint64_t word = std::bit_cast<std::uint32_t>(from); word <= end;) {
        for (std::int32_t i = 0; i < bank.count; i += 2, word += stride) {
            const float phase = std::bit_cast<float>(static_cast<std::uint32_t>(word));
            bank.freq[i] = phase;
            bank.freq[i + 1] = -phase;
        }
        const std::string wrong = wrapAndCheck(kernel, bank);
        if (!wrong.empty()) {
            return wrong;
        }
    }
    return {};
}
