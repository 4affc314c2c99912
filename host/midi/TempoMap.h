// Where in seconds each tick of a song lies, and where in quarter notes each second.
#pragma once

#include <cstdint>
#include <vector>

namespace zelvatone {

// Quarter notes a minute that hold until a song says otherwise; MIDI files fix it.
constexpr double kTempoBeforeAnyChange = 120.0;

class TempoMap {
public:
    struct Change {
        std::int64_t tick;
        double secondsPerQuarter; // above 0
    };

    // `ticksPerQuarter` above 0; `changes` in the order of their ticks. Of several changes on one
    // tick the last one holds.
    TempoMap(double ticksPerQuarter, const std::vector<Change>& changes);

    // Position of a tick from 0 on, also after the last change.
    double secondsAtTick(std::int64_t tick) const;
    // Position of a time from 0 s on, in quarter notes from the start.
    double quartersAtSeconds(double seconds) const;
    // Quarter notes a minute that hold at and after a time from 0 s on.
    double tempoAtSeconds(double seconds) const;
    double quartersAtTick(std::int64_t tick) const;

    // Quarter notes a minute.
    struct Range {
        double lowest;
        double highest;
    };
    // Of all tempos that hold somewhere.
    Range tempoRange() const;

    double ticksPerQuarter() const { return ticksPerQuarter_; }
    // In order, the tempo at the start among them.
    std::vector<Change> changes() const;

private:
    // A stretch of one tempo; the first one starts at 0.
    struct Stretch {
        std::int64_t tick;
        double seconds;
        double secondsPerQuarter;
    };
    const Stretch& stretchAtSeconds(double seconds) const;

    double ticksPerQuarter_;
    std::vector<Stretch> stretches_;
};

} // namespace zelvatone
