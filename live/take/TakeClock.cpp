#include "live/take/TakeClock.h"

#include "host/render/EventSchedule.h"

#include <cmath>

namespace zelvatone {

namespace {

constexpr int kMostTicks = 32767; // a quarter note, in a MIDI file's header

bool isConstant(const std::vector<TempoMap::Change>& changes) {
    return changes.size() == 1 && changes[0].secondsPerQuarter == 60.0 / kTempoBeforeAnyChange;
}

// Ticks that fall on samples where that can be: half a second, a quarter note, has rate / 2.
int plainTicks(int rate) {
    if (rate <= kMostTicks) {
        return rate; // two ticks a sample
    }
    for (int samples = 1; rate / (2 * samples) > 0; ++samples) {
        if (rate % (2 * samples) == 0 && rate / (2 * samples) <= kMostTicks) {
            return rate / (2 * samples);
        }
    }
    return kMostTicks;
}

// A song's own ticks in as many parts as the header allows: its own events stay where they are, to
// the bit.
TempoMap fileTempo(const TempoMap& tempo, int rate) {
    std::vector<TempoMap::Change> changes = tempo.changes();
    if (isConstant(changes)) {
        return {static_cast<double>(plainTicks(rate)), {}};
    }
    const auto parts = static_cast<std::int64_t>(kMostTicks / tempo.ticksPerQuarter());
    for (TempoMap::Change& change : changes) {
        change.tick *= parts;
    }
    return {tempo.ticksPerQuarter() * static_cast<double>(parts), changes};
}

} // namespace

TakeClock::TakeClock(const TempoMap& tempo, int rate)
    : tempo_(fileTempo(tempo, rate)), rate_(static_cast<double>(rate)) {}

int TakeClock::ticksPerQuarter() const {
    return static_cast<int>(tempo_.ticksPerQuarter());
}

std::int64_t TakeClock::frameAtTick(std::int64_t tick) const {
    return frameAt(tempo_.secondsAtTick(tick), rate_);
}

std::int64_t TakeClock::tickAt(std::int64_t frame) const {
    const double quarters = tempo_.quartersAtSeconds(static_cast<double>(frame) / rate_);
    std::int64_t tick = std::llround(quarters * tempo_.ticksPerQuarter());
    while (frameAtTick(tick) < frame) {
        ++tick;
    }
    while (tick > 0 && frameAtTick(tick - 1) >= frame) {
        --tick;
    }
    return tick;
}

} // namespace zelvatone
