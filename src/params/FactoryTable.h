// The factory programs as data.
#pragma once

#include "params/ParameterTable.h"

#include <array>

namespace zelvatone {

// Fractions of each parameter's range, as they were dialled in and stored: 0 is the minimum, 1 the
// maximum. The values in units that they lead to are not round numbers, and are part of the sound.
struct FactoryRow {
    const char* name;
    std::array<double, kParameterCount> fractions; // by parameter index
};

// Marks a parameter that a program leaves as the default program has it.
constexpr double kUnset = -1.0;

extern const std::array<FactoryRow, 41> kFactoryTable;

} // namespace zelvatone
