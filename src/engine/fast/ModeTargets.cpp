#include "engine/fast/ModeTargets.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <span>

namespace zelvatone {

namespace {

// Equal to the bit: a zero may change its sign, and NaN is a value like any other.
template<class Record>
bool isSame(const Record& a, const Record& b) {
    using Bits = std::array<std::uint32_t, sizeof(Record) / sizeof(std::uint32_t)>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

} // namespace

ModeTargets::ModeTargets(const VoiceSettings* settings) : settings_(settings) {
    renewPowers();
}

void ModeTargets::renewPowers() {
    shape_ = {settings_->falloff, settings_->parity, settings_->detune};
    const float evenFactor = std::min(static_cast<float>(1.0 - shape_.parity), 1.0F);
    const float oddFactor = std::min(static_cast<float>(shape_.parity + 1.0), 1.0F);
    for (std::int32_t k = 1; k <= kMaxModeCount; ++k) {
        harmonicAmps_[k - 1] =
            powerAsFloat(k, shape_.falloff) * (k % 2 == 0 ? evenFactor : oddFactor);
    }
    for (std::size_t j = 0; j < ratios_.size(); ++j) {
        ratios_[j] = extraRatio(static_cast<std::int32_t>(j), shape_.detune);
    }
    set_.count = -1; // the amplitudes are out of date
}

void ModeTargets::renewAmplitudes(std::int32_t count, std::int32_t extras) {
    set_ = {count, extras, settings_->primePower};
    std::fill_n(amplitudes_.begin(), extras, set_.primePower);
    std::copy_n(harmonicAmps_.begin(), count - extras, amplitudes_.begin() + extras);
    const std::span<float> used(amplitudes_.data(), static_cast<std::size_t>(count));
    const float sum = std::accumulate(used.begin(), used.end(), 0.0F);
    if (sum > 0.0F) {
        for (float& amplitude : used) {
            amplitude /= sum;
        }
    }
}

void ModeTargets::fill(ModeVoice& voice, std::int32_t count) {
    if (!isSame(shape_, Shape{settings_->falloff, settings_->parity, settings_->detune})) {
        renewPowers();
    }
    const std::int32_t extras = std::clamp(std::min(settings_->primeModes, count), 0,
                                           static_cast<std::int32_t>(ratios_.size()));
    if (!isSame(set_, Set{count, extras, settings_->primePower})) {
        renewAmplitudes(count, extras);
    }
    std::copy_n(amplitudes_.begin(), count, voice.targetAmp.begin());
    for (std::int32_t j = 0; j < extras; ++j) {
        voice.targetFreq[j] = voice.baseFreq / ratios_[j];
    }
    for (std::int32_t k = 1; k <= count - extras; ++k) {
        float& frequency = voice.targetFreq[extras + k - 1];
        frequency = static_cast<float>(k) * voice.baseFreq;
        if (k % 2 == 0) {
            frequency += settings_->jitterHz;
        } else if (k > 1) {
            frequency -= settings_->jitterHz;
        }
    }
}

} // namespace zelvatone
