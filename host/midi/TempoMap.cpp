#include "host/midi/TempoMap.h"

#include <algorithm>

namespace zelvatone {

namespace {

// A block that starts on a tempo change must not miss it because a division rounded down. A
// nanosecond is far above that error and far below a sample.
constexpr double kRoundingSeconds = 1e-9;

} // namespace

TempoMap::TempoMap(double ticksPerQuarter, const std::vector<Change>& changes)
    : ticksPerQuarter_(ticksPerQuarter), stretches_{{0, 0.0, 60.0 / kTempoBeforeAnyChange}} {
    stretches_.reserve(changes.size() + 1);
    for (const Change& change : changes) {
        const Stretch next{change.tick, secondsAtTick(change.tick), change.secondsPerQuarter};
        if (stretches_.back().tick == next.tick) {
            stretches_.back() = next;
        } else {
            stretches_.push_back(next);
        }
    }
}

double TempoMap::secondsAtTick(std::int64_t tick) const {
    const auto after =
        std::upper_bound(stretches_.begin(), stretches_.end(), tick,
                         [](std::int64_t t, const Stretch& stretch) { return t < stretch.tick; });
    const Stretch& stretch = *(after - 1);
    return stretch.seconds +
           static_cast<double>(tick - stretch.tick) / ticksPerQuarter_ * stretch.secondsPerQuarter;
}

const TempoMap::Stretch& TempoMap::stretchAtSeconds(double seconds) const {
    const auto after =
        std::upper_bound(stretches_.begin() + 1, stretches_.end(), seconds + kRoundingSeconds,
                         [](double s, const Stretch& stretch) { return s < stretch.seconds; });
    return *(after - 1);
}

double TempoMap::quartersAtSeconds(double seconds) const {
    const Stretch& stretch = stretchAtSeconds(seconds);
    return quartersAtTick(stretch.tick) + (seconds - stretch.seconds) / stretch.secondsPerQuarter;
}

double TempoMap::tempoAtSeconds(double seconds) const {
    return 60.0 / stretchAtSeconds(seconds).secondsPerQuarter;
}

double TempoMap::quartersAtTick(std::int64_t tick) const {
    return static_cast<double>(tick) / ticksPerQuarter_;
}

TempoMap::Range TempoMap::tempoRange() const {
    const auto [shortest, longest] =
        std::minmax_element(stretches_.begin(), stretches_.end(), [](const auto& a, const auto& b) {
            return a.secondsPerQuarter < b.secondsPerQuarter;
        });
    return {60.0 / longest->secondsPerQuarter, 60.0 / shortest->secondsPerQuarter};
}

std::vector<TempoMap::Change> TempoMap::changes() const {
    std::vector<Change> changes;
    changes.reserve(stretches_.size());
    for (const Stretch& stretch : stretches_) {
        changes.push_back({stretch.tick, stretch.secondsPerQuarter});
    }
    return changes;
}

} // namespace zelvatone
