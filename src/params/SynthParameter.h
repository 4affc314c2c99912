// The parameter kinds: a named value in units with its range, its mapping to and from the host's
// normalised 0 to 1, and its display text.
#pragma once

#include <string>

namespace zelvatone {

// The base kind: a continuous value, shown with two decimals.
//
// A parameter object has no lock. Any thread writes `value` as one 32-bit store while others read
// it; see SharedValue.h. All other fields never change after construction.
class SynthParameter {
public:
    using Mapping = float (*)(float min, float max, float from);

    // "Unnamed Parameter", 0 to 1 at 0: what fills a new program's slots.
    SynthParameter();
    // `min`, `max` and `defaultValue` in units. The default becomes the value as it stands,
    // neither clamped nor rounded.
    SynthParameter(std::string name, std::string label, float min, float max, float defaultValue);

    // The current value as text, with the label.
    virtual std::string getDisplay() const;
    // Stores `newValue` (units), clamped to min..max. Not-a-number is kept: it is neither below
    // min nor above max.
    virtual void setValue(float newValue);
    // A new object of the same kind with every field copied; the caller owns it.
    virtual SynthParameter* clone() const;

    // Deletes a parameter of any kind, made with new, through this base. The kinds add no members,
    // so there is nothing for a virtual destructor to find.
    static void destroy(SynthParameter* parameter);

    // Which pair of mappings is installed is what sets the kinds apart, and a copy carries it
    // along: (min, max, normalised) to units, and (min, max, units) to normalised.
    Mapping toUnits;
    Mapping toNormalised;
    std::string name;
    std::string label; // the unit: "Hz", "s", "osc", ... or empty
    float max;         // units, as are the next three
    float min;
    float defaultValue;
    float value;

protected:
    SynthParameter(Mapping toUnits, Mapping toNormalised, std::string name, std::string label,
                   float min, float max, float defaultValue);
};

// A fraction, shown as whole percents.
class PercentSynthParameter : public SynthParameter {
public:
    using SynthParameter::SynthParameter;

    std::string getDisplay() const override;
    SynthParameter* clone() const override;
};

// A whole number. Values are rounded down, never to the nearest: the factory programs are written
// for that.
class IntegerSynthParameter : public SynthParameter {
public:
    IntegerSynthParameter(std::string name, std::string label, float min, float max,
                          float defaultValue);

    std::string getDisplay() const override;
    // Rounds down, then clamps.
    void setValue(float newValue) override;
    SynthParameter* clone() const override;
};

// A choice among the named waveforms.
class WaveSynthParameter : public IntegerSynthParameter {
public:
    using IntegerSynthParameter::IntegerSynthParameter;

    std::string getDisplay() const override;
    SynthParameter* clone() const override;
};

// A length in beats, held as the exponent of a power of two.
class BeatsSynthParameter : public IntegerSynthParameter {
public:
    using IntegerSynthParameter::IntegerSynthParameter;

    std::string getDisplay() const override;
    SynthParameter* clone() const override;
};

} // namespace zelvatone
