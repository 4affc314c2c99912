// The samples that a MIDI file can name: what is played live is moved to the next of them, so that
// a rendering of the file plays it at the very same samples.
#pragma once

#include "host/midi/TempoMap.h"

#include <cstdint>

namespace zelvatone {

class TakeClock {
public:
    // `tempo`: that of the song which is played along with, or any that begins with 120 quarter
    // notes a minute and never changes. Rate in Hz, up to 192000.
    TakeClock(const TempoMap& tempo, int rate);

    // The tempo in the file's ticks.
    const TempoMap& tempo() const { return tempo_; }
    int ticksPerQuarter() const;

    // The sample at which a rendering plays an event of this tick.
    std::int64_t frameAtTick(std::int64_t tick) const;
    // The first tick whose sample is `frame`, 0 or later, or after it. At 120 quarter notes a
    // minute and the usual rates up to 48 kHz each sample has one. Any thread; never allocates.
    std::int64_t tickAt(std::int64_t frame) const;
    // The sample of that tick.
    std::int64_t nextFrame(std::int64_t frame) const { return frameAtTick(tickAt(frame)); }

private:
    TempoMap tempo_;
    double rate_;
};

} // namespace zelvatone
