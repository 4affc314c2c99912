// What a session keeps of the instrument, and how it is written. docs/formats.md shows the text.
#pragma once

#include "params/ParameterTable.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

struct InstrumentState {
    std::array<float, kParameterCount> values; // units, by parameter index
    bool isBypassed;

    bool operator==(const InstrumentState&) const = default;
};

// The state of a new instrument.
InstrumentState defaultState();

// Every float as the shortest decimal that reads back as the same float; a point in every locale.
std::string textOfState(const InstrumentState& state);

// Reads back exactly what textOfState writes. None for any other text: shorter, longer, of another
// version, with values that are not numbers, not in their parameter's range, or not whole where the
// parameter is.
std::optional<InstrumentState> stateOfText(std::string_view text);

// No state is longer; a reader of a stream may stop there.
inline constexpr std::size_t kMostStateBytes = 2048;

} // namespace zelvatone
