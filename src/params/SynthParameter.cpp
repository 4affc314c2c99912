#include "params/SynthParameter.h"

#include "params/DisplayText.h"
#include "params/SharedValue.h"
#include "params/Truncation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>
#include <utility>

namespace zelvatone {

namespace {

// The mappings work in single precision, one rounding an operation: the host's value and the
// stored one agree to the bit on every platform.

float linearToUnits(float min, float max, float normalised) {
    return min + (max - min) * normalised;
}

float linearToNormalised(float min, float max, float units) {
    return (units - min) / (max - min);
}

float flooredToUnits(float min, float max, float normalised) {
    return std::floor(linearToUnits(min, max, normalised));
}

float flooredToNormalised(float min, float max, float units) {
    return linearToNormalised(min, max, std::floor(units));
}

} // namespace

SynthParameter::SynthParameter() : SynthParameter("Unnamed Parameter", "", 0.0F, 1.0F, 0.0F) {}

SynthParameter::SynthParameter(std::string name, std::string label, float min, float max,
                               float defaultValue)
    : SynthParameter(linearToUnits, linearToNormalised, std::move(name), std::move(label), min, max,
                     defaultValue) {}

SynthParameter::SynthParameter(Mapping toUnits, Mapping toNormalised, std::string name,
                               std::string label, float min, float max, float defaultValue)
    : toUnits(toUnits),
      toNormalised(toNormalised),
      name(std::move(name)),
      label(std::move(label)),
      max(max),
      min(min),
      defaultValue(defaultValue),
      value(defaultValue) {}

void SynthParameter::destroy(SynthParameter* parameter) {
    parameter->SynthParameter::~SynthParameter();
    ::operator delete(parameter);
}

std::string SynthParameter::getDisplay() const {
    return fixedText(static_cast<double>(loadShared(value)), 2) + ' ' + label;
}

void SynthParameter::setValue(float newValue) {
    if (min > newValue) {
        storeShared(value, min);
    } else if (max < newValue) {
        storeShared(value, max);
    } else {
        storeShared(value, newValue);
    }
}

SynthParameter* SynthParameter::clone() const {
    return new SynthParameter(*this);
}

std::string PercentSynthParameter::getDisplay() const {
    std::string digits = fixedText(static_cast<double>(loadShared(value)) * 100.0, 0);
    if (digits.size() < 2) { // two columns, so that texts under a knob do not jump
        digits.insert(0, 1, ' ');
    }
    return digits + label;
}

SynthParameter* PercentSynthParameter::clone() const {
    return new PercentSynthParameter(*this);
}

IntegerSynthParameter::IntegerSynthParameter(std::string name, std::string label, float min,
                                             float max, float defaultValue)
    : SynthParameter(flooredToUnits, flooredToNormalised, std::move(name), std::move(label), min,
                     max, defaultValue) {}

std::string IntegerSynthParameter::getDisplay() const {
    return std::to_string(truncateToInt32(static_cast<double>(loadShared(value)))) + ' ' + label;
}

void IntegerSynthParameter::setValue(float newValue) {
    SynthParameter::setValue(std::floor(newValue));
}

SynthParameter* IntegerSynthParameter::clone() const {
    return new IntegerSynthParameter(*this);
}

std::string WaveSynthParameter::getDisplay() const {
    static constexpr std::array<const char*, 5> kNames = {"Sine", "Square", "Saw", "Poly",
                                                          "Son of Poly"};
    const auto choice =
        static_cast<std::uint32_t>(truncateToInt32(static_cast<double>(loadShared(value))));
    return choice < kNames.size() ? kNames[choice] : "";
}

SynthParameter* WaveSynthParameter::clone() const {
    return new WaveSynthParameter(*this);
}

std::string BeatsSynthParameter::getDisplay() const {
    const std::int32_t exponent = truncateToInt32(static_cast<double>(loadShared(value)));
    // ldexp is exact. Whole beats are raised in single precision: beyond its range they show as
    // infinite, parts of a beat only beyond that of double.
    const double beats = exponent < 0 ? std::ldexp(1.0, -std::max(exponent, -INT32_MAX))
                                      : static_cast<double>(std::ldexp(1.0F, exponent));
    return (exponent < 0 ? "1/" : "") + fixedText(beats, 0) + ' ' + label;
}

SynthParameter* BeatsSynthParameter::clone() const {
    return new BeatsSynthParameter(*this);
}

} // namespace zelvatone
