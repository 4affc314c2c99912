#include "dataset/SoundLoudness.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <vector>

namespace zelvatone {

namespace {

using Doubles __attribute__((vector_size(8 * kLoudnessLanes))) = double;
using Energy = std::array<double, kLoudnessLanes>; // by sound
using SoundLanes = std::array<std::span<const float>, kLoudnessLanes>;

// y = b0 x + b1 x1 + b2 x2 - a1 y1 - a2 y2
struct Biquad {
    std::array<double, 3> b;
    std::array<double, 2> a;
};

// The recommendation gives both filters for 48 kHz. These are the analogue ones that they are made
// from, which give them for every rate: frequency in Hz, quality, and the shelf's gain.
constexpr double kShelfHz = 1681.974450955533;
constexpr double kShelfQuality = 0.7071752369554196;
constexpr double kShelfDecibels = 3.999843853973347;
constexpr double kShelfBend = 0.4996667741545416; // share of the gain at the middle of the shelf
constexpr double kHighPassHz = 38.13547087602444;
constexpr double kHighPassQuality = 0.5003270373238773;

double warped(double frequency, int sampleRate) {
    return std::tan(std::numbers::pi * frequency / sampleRate);
}

// The head's own weight of what is high.
Biquad shelf(int sampleRate) {
    const double k = warped(kShelfHz, sampleRate);
    const double high = std::pow(10.0, kShelfDecibels / 20.0);
    const double middle = std::pow(high, kShelfBend);
    const double a0 = 1.0 + k / kShelfQuality + k * k;
    return {{(high + middle * k / kShelfQuality + k * k) / a0, 2.0 * (k * k - high) / a0,
             (high - middle * k / kShelfQuality + k * k) / a0},
            {2.0 * (k * k - 1.0) / a0, (1.0 - k / kShelfQuality + k * k) / a0}};
}

Biquad highPass(int sampleRate) {
    const double k = warped(kHighPassHz, sampleRate);
    const double a0 = 1.0 + k / kHighPassQuality + k * k;
    return {{1.0, -2.0, 1.0},
            {2.0 * (k * k - 1.0) / a0, (1.0 - k / kHighPassQuality + k * k) / a0}};
}

// One behind the other, as one filter of order 4: y from w, and w from x and its own last values.
struct Weighting {
    std::array<double, 5> b{};
    std::array<double, 5> a{};

    explicit Weighting(int sampleRate) {
        const Biquad first = shelf(sampleRate);
        const Biquad second = highPass(sampleRate);
        const std::array<double, 3> firstA{1.0, first.a[0], first.a[1]};
        const std::array<double, 3> secondA{1.0, second.a[0], second.a[1]};
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t j = 0; j < 3; ++j) {
                b[i + j] += first.b[i] * second.b[j];
                a[i + j] += firstA[i] * secondA[j];
            }
        }
    }
};

struct State {
    Doubles w1{}, w2{}, w3{}, w4{};
};

// The sum of squares of the weighted samples from `first` to before `end`. The order of the sums is
// that of one sound alone, whatever the width of the processor's vectors.
[[gnu::always_inline]] inline void addEnergy(const SoundLanes& sounds, std::size_t first,
                                             std::size_t end, const Weighting& filter, State& state,
                                             Energy& energy) {
    const std::array<const float*, kLoudnessLanes> at{sounds[0].data(), sounds[1].data(),
                                                      sounds[2].data(), sounds[3].data()};
    const auto [b0, b1, b2, b3, b4] = filter.b;
    const auto [one, a1, a2, a3, a4] = filter.a;
    auto [w1, w2, w3, w4] = state;
    Doubles sum{};
    for (std::size_t i = first; i < end; ++i) {
        const Doubles x{at[0][i], at[1][i], at[2][i], at[3][i]};
        const Doubles w = x - a4 * w4 - a3 * w3 - a2 * w2 - a1 * w1;
        const Doubles y = b4 * w4 + b3 * w3 + b2 * w2 + b1 * w1 + b0 * w;
        sum += y * y;
        w4 = w3;
        w3 = w2;
        w2 = w1;
        w1 = w;
    }
    state = {w1, w2, w3, w4};
    std::memcpy(energy.data(), &sum, sizeof sum);
}

// What is left of a sound long ago would become denormal numbers, which take the processor long.
void forgetTraces(State& state) {
    constexpr double kTrace = 1e-100; // a step leaves 1e-11 of what is there, or more
    for (Doubles* w : {&state.w1, &state.w2, &state.w3, &state.w4}) {
        const auto isTrace = (*w < kTrace) & (*w > -kTrace);
        *w = isTrace ? Doubles{} : *w;
    }
}

using AddEnergy = void (*)(const SoundLanes&, std::size_t, std::size_t, const Weighting&, State&,
                           Energy&);

void addEnergyAnywhere(const SoundLanes& sounds, std::size_t first, std::size_t end,
                       const Weighting& filter, State& state, Energy& energy) {
    addEnergy(sounds, first, end, filter, state, energy);
}

#if defined(__x86_64__)
// The same instructions' results to the bit, for the processor computes four lanes at once.
[[gnu::target("avx2")]] void addEnergyAvx2(const SoundLanes& sounds, std::size_t first,
                                           std::size_t end, const Weighting& filter, State& state,
                                           Energy& energy) {
    addEnergy(sounds, first, end, filter, state, energy);
}

AddEnergy widestAddEnergy() {
    return __builtin_cpu_supports("avx2") != 0 ? addEnergyAvx2 : addEnergyAnywhere;
}
#else
AddEnergy widestAddEnergy() {
    return addEnergyAnywhere;
}
#endif

double loudnessOf(double meanSquare) {
    constexpr double kOffset = -0.691; // the weighting's gain at 997 Hz, where the scale is set
    return kOffset + 10.0 * std::log10(meanSquare);
}

// Mean of those that are `least` or more; 0 for none.
double meanFrom(const std::vector<double>& blocks, double least) {
    double sum = 0.0;
    int count = 0;
    for (const double block : blocks) {
        if (block >= least) {
            sum += block;
            ++count;
        }
    }
    return count == 0 ? 0.0 : sum / count;
}

// Of the mean squares of all blocks: those count that are not silent, nor 10 LU below the others.
double gated(const std::vector<double>& blocks) {
    constexpr double kRelative = 0.1;                                     // -10 LU
    static const double kSilent = std::pow(10.0, (-70.0 + 0.691) / 10.0); // -70 LUFS
    const double mean = meanFrom(blocks, kSilent);
    if (mean == 0.0) {
        return -std::numeric_limits<double>::infinity();
    }
    return loudnessOf(meanFrom(blocks, std::max(kSilent, mean * kRelative)));
}

} // namespace

std::array<double, kLoudnessLanes>
soundLoudness(const std::array<std::span<const float>, kLoudnessLanes>& sounds, int sampleRate) {
    static const AddEnergy kAddEnergy = widestAddEnergy();
    constexpr std::size_t kStepsInBlock = 4; // of 0.1 s
    const auto step = static_cast<std::size_t>((sampleRate + 5) / 10);
    const Weighting filter(sampleRate);
    State state;
    std::vector<Energy> steps;
    for (std::size_t at = 0; at + step <= sounds[0].size(); at += step) {
        steps.emplace_back();
        kAddEnergy(sounds, at, at + step, filter, state, steps.back());
        forgetTraces(state);
    }
    std::array<double, kLoudnessLanes> loudness{};
    for (std::size_t lane = 0; lane < kLoudnessLanes; ++lane) {
        std::vector<double> blocks;
        for (std::size_t i = kStepsInBlock; i <= steps.size(); ++i) {
            double sum = 0.0;
            for (std::size_t j = i - kStepsInBlock; j < i; ++j) {
                sum += steps[j][lane];
            }
            blocks.push_back(sum / static_cast<double>(kStepsInBlock * step));
        }
        loudness[lane] = gated(blocks);
    }
    return loudness;
}

} // namespace zelvatone
