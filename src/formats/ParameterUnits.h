// The parameters as formats that speak in units show them. "Reserved", the last one, shapes nothing
// and is not shown.
#pragma once

#include "params/ParameterTable.h"
#include "params/SynthParameter.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// The parameters shown are 0 to kShownParameters - 1. A parameter keeps its index for ever:
// sessions and automation name it.
inline constexpr std::int32_t kShownParameters = kReserved;

// One text of a parameter that has a text for each of its values.
struct ParameterChoice {
    float value; // units
    std::string text;
};

// Constant once made; any thread after the first call.
struct ParameterUnits {
    ParameterIndex index;
    std::string name;   // in full: "Shift Interval"
    std::string symbol; // the same for machines: "shift_interval"
    std::string unit;   // "osc", "beats", "Hz", "bits", "s", "%", or empty
    float min, max, defaultValue;
    bool isWhole;                         // whole numbers only
    std::vector<ParameterChoice> choices; // of "Wave" and "Shift Interval", by value; else empty
};

// All 23, by index. Made at the first call, which allocates: not on the audio thread.
std::span<const ParameterUnits> parameterUnits();

// The value that the parameter takes on when `units` is asked for: within its range, and the
// nearest whole number where it is whole. NaN gives the default.
float nearestValue(const ParameterUnits& parameter, double units);

// The text that the editor shows for `value`, with its unit and no blank around it. Allocates.
std::string textOfValue(const ParameterUnits& parameter, float value);

// The value that `text` stands for: one of the choices, or a number with or without the unit, in
// every case as nearestValue gives it. Capitals and blanks around do not matter. None for any other
// text. A number of a parameter in percent counts percents.
std::optional<float> valueOfText(const ParameterUnits& parameter, std::string_view text);

// Reads back what exactText writes of a value. None for any other text, for a number outside
// the parameter's range, and for one that is not whole where the parameter is.
std::optional<float> valueOfExactText(const ParameterUnits& parameter, std::string_view text);

} // namespace zelvatone
