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

int MeterMap::changeCount() const {
    int count = 0;
    Change before = changes_[0];
    for (std::size_t i = 1; i < changes_.size(); ++i) {
        const Change& change = changes_[i];
        if (i + 1 < changes_.size() && changes_[i + 1].quarters == change.quarters) {
            continue; // the next one holds
        }
        const bool isOther =
            change.numerator != before.numerator || change.denominator != before.denominator;
        count += isOther && change.quarters > 0.0 ? 1 : 0;
        before = change;
    }
    return count;
}

} // namespace zelvatone
