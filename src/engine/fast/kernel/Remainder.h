// The exact remainder of any float by kTurn, the nearest float to 2 pi.
//
// kTurn is kUnits * 2^-21 with a whole number kUnits below 2^24. A float is a whole number times a
// power of two, so only that power has to be known modulo kUnits. Let |x| = n * 2^(t - 21) with a
// whole n below 2^28, and p = 2^t mod kUnits:
//
//     |x| = n * 2^t units, and n * p units leave the same remainder;
//     n * p < 2^52 is exact in double precision, as |x| * (p / 2^t);
//     the nearest number of whole turns in it, at most 2^29, is found to within a hair of a half;
//     what they leave, kUnits / 2 at most, is exact, and adding one turn to a negative rest, too.
//
// One factor p / 2^t serves |x| from 2^(t + 2) to 2^(t + 7): five powers of two. Up to 2^30 it
// is 1.
#pragma once

#include "engine/fast/kernel/Lanes.h"

namespace zelvatone {
namespace {

// The nearest float to 2 pi.
constexpr float kTurn = 6.2831854820251465F;

// As many doubles as there are lanes: two vectors of them.
using Doubles __attribute__((vector_size(8 * kLanes))) = double;

// The factors p / 2^t, by t.
struct TurnFactors {
    static constexpr std::int32_t kCount = 125;
    double at[kCount];
};

constexpr TurnFactors tabulateTurnFactors() {
    constexpr std::int32_t kUnits = 13176795;
    static_assert(kUnits == static_cast<double>(kTurn) * (1 << 21));
    TurnFactors factors{};
    std::int32_t power = 1;
    double scale = 1.0;
    for (double& factor : factors.at) {
        factor = power * scale;
        power = power * 2 % kUnits;
        scale *= 0.5;
    }
    return factors;
}

constexpr TurnFactors kTurnFactors = tabulateTurnFactors();

constexpr std::int32_t kExponentBit = 23; // the lowest bit of a float's exponent
constexpr std::int32_t kExponentBias = 127;
constexpr std::int32_t kInfiniteExponent = 255;
// From here on a factor is needed.
constexpr std::int32_t kPlainPowers = 30;
constexpr float kPlainLimit = 1 << kPlainPowers;

// A factor for each lane, renewed where a lane's phase has left the five powers of two that it
// serves. A phase that grows at the fastest drop takes hundreds of samples for that.
struct TurnReducer {
    static constexpr double kRounding = 3ULL << 51U; // sums with it have no binary places

    // For lanes below kPlainLimit.
    ZELVATONE_INLINE void reset() {
        lowest = Floats{};
        limit = fill(kPlainLimit);
        factor = Doubles{} + 1.0;
    }

    // fmod(phase, kTurn), with the sign of `phase`; NaN for what is not a finite number.
    ZELVATONE_INLINE Floats remainder(Floats phase) {
        const Floats size = absolute(phase);
        if (anySet((size < lowest) | (size >= limit))) { // never for NaN
            renew(size);
        }
        const Doubles reduced = __builtin_convertvector(size, Doubles) * factor;
        const Doubles turns = (reduced * (1.0 / double{kTurn}) + kRounding) - kRounding;
        const Floats rest = __builtin_convertvector(reduced - turns * double{kTurn}, Floats);
        const Floats whole = select(rest < 0.0F, rest + kTurn, rest);
        return fromBits(bits(whole) | (bits(phase) & INT32_MIN));
    }

    [[gnu::noinline]] void renew(Floats size) {
        float sizes[kLanes], lowests[kLanes], limits[kLanes];
        double factors[kLanes];
        store(sizes, size);
        for (std::int32_t i = 0; i < kLanes; ++i) {
            renewLane(sizes[i], lowests[i], limits[i], factors[i]);
        }
        lowest = load(lowests);
        limit = load(limits);
        __builtin_memcpy(&factor, factors, sizeof factor);
    }

    // Puts the float's own power of two in the middle of the five.
    static void renewLane(float size, float& lowest, float& limit, double& factor) {
        if (!(size >= kPlainLimit)) {
            lowest = 0.0F;
            limit = kPlainLimit;
            factor = 1.0;
            return;
        }
        std::int32_t exponent = 0;
        __builtin_memcpy(&exponent, &size, sizeof exponent);
        exponent = (exponent >> kExponentBit) - 2;
        lowest = power(exponent);
        limit = power(exponent + 5);
        factor = kTurnFactors.at[exponent - kExponentBias - 2];
    }

    // The float with this exponent and no other bit: a power of two, or infinity.
    static float power(std::int32_t exponent) {
        const std::int32_t bits = (exponent < kInfiniteExponent ? exponent : kInfiniteExponent)
                                  << kExponentBit;
        float value = 0.0F;
        __builtin_memcpy(&value, &bits, sizeof value);
        return value;
    }

    Floats lowest, limit; // the factors serve sizes from here to below there
    Doubles factor;
};

} // namespace
} // namespace zelvatone
