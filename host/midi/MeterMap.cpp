#include "host/midi/MeterMap.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvatone {

namespace {

// In quarters and in bars alike: more than the rounding of a position, less than any sample.
constexpr double kRounding = 1e-9;

} // namespace

MeterMap::MeterMap(std::vector<Change> changes) : changes_(std::move(changes)) {
    changes_.insert(changes_.begin(), {0.0, 4, 4});
}

MeterMap::Bar MeterMap::barAt(double quarters) const {
    const auto after =
        std::upper_bound(changes_.begin() + 1, changes_.end(), quarters + kRounding,
                         [](double q, const Change& change) { return q < change.quarters; });
    const Change& change = *(after - 1);
    const double barQuarters = 4.0 * change.numerator / change.denominator;
    const double bars = std::floor((quarters - change.quarters) / barQuarters + kRounding);
    return {change.quarters + bars * barQuarters, change.numerator, change.denominator};
}

} // namespace zelvatone
