#include "engine/ParameterReading.h"

#include "engine/WaveTable.h"
#include "params/CheckedAccess.h"
#include "params/ParameterTable.h"
#include "params/SharedValue.h"
#include "params/Truncation.h"

#include <cmath>

namespace zelvatone {

namespace {

float valueOf(const ParameterList& parameters, ParameterIndex index) {
    return loadShared(checkedAt(parameters, index)->value);
}

double widenedValueOf(const ParameterList& parameters, ParameterIndex index) {
    return static_cast<double>(valueOf(parameters, index));
}

std::int32_t roundedValueOf(const ParameterList& parameters, ParameterIndex index) {
    return roundToInt32(valueOf(parameters, index));
}

// 1 plus or minus 10 to the power of |v| - 10: from no change at all in the middle to one percent
// a sample at the ends of "Freq Drop".
float dropFactorOf(float v) {
    const double sign = v < 0.0F ? -1.0 : 1.0;
    const auto exponent = static_cast<float>(std::fabs(v) - 10.0);
    const auto power = static_cast<float>(std::pow(10.0, static_cast<double>(exponent)));
    return static_cast<float>(1.0 + sign * power);
}

// How many modes there are, and how that changes over time.
void readShiftParameters(const ParameterList& parameters, VoiceSettings& settings) {
    settings.modeShift = roundedValueOf(parameters, kModeShift);
    const auto beats =
        static_cast<float>(std::pow(2.0, widenedValueOf(parameters, kShiftInterval)));
    settings.shiftBeats = static_cast<double>(beats);
    settings.minModes = roundedValueOf(parameters, kMinModes);
    settings.maxModes = roundedValueOf(parameters, kMaxModes);
    settings.blendSeconds = widenedValueOf(parameters, kBlendTime);
    settings.exitPeel = valueOf(parameters, kExitPeel);
    // Cut off, not rounded, unlike all other counts.
    settings.initialModes = truncateToInt32(widenedValueOf(parameters, kModeInit));
}

// Where the modes lie and how loud they are.
void readModeParameters(const ParameterList& parameters, VoiceSettings& settings) {
    settings.falloff = valueOf(parameters, kFalloff);
    settings.parity = valueOf(parameters, kParity);
    settings.jitterHz = valueOf(parameters, kJitter);
    settings.dropFactor = dropFactorOf(valueOf(parameters, kFreqDrop));
    settings.primeModes = roundedValueOf(parameters, kModes);
    settings.detune = valueOf(parameters, kDetune);
    settings.primePower = valueOf(parameters, kPower);
    settings.dropModulus = roundedValueOf(parameters, kDropMod);
}

void readWaveParameters(const ParameterList& parameters, VoiceSettings& settings) {
    settings.chop = valueOf(parameters, kChop);
    const std::int32_t waveKind = roundedValueOf(parameters, kWave);
    if (waveKind != settings.waveKind) {
        settings.waveKind = waveKind;
        wavetable::build(settings, settings.tableSize);
    }
    const std::int32_t crushBits = roundedValueOf(parameters, kCrush);
    if (crushBits != settings.crushBits) {
        settings.crushBits = crushBits;
        wavetable::build(settings, settings.tableSize);
    }
}

} // namespace

void readVoiceSettings(const ParameterList& parameters, VoiceSettings& settings) {
    readShiftParameters(parameters, settings);
    readModeParameters(parameters, settings);
    readWaveParameters(parameters, settings);
}

void readEnvelopeSettings(const ParameterList& parameters, EnvelopeSettings& settings) {
    settings.attack = widenedValueOf(parameters, kAttack);
    settings.decay = widenedValueOf(parameters, kDecay);
    settings.sustain = widenedValueOf(parameters, kSustain);
    settings.release = widenedValueOf(parameters, kRelease);
}

std::int32_t readShaperSet(const ParameterList& parameters) {
    return roundedValueOf(parameters, kReserved);
}

} // namespace zelvatone
