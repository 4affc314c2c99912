// A song's events at samples.
#pragma once

#include "host/midi/Song.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace zelvatone {

struct ScheduledEvent {
    std::int64_t frame;     // from the start of the song
    const SongEvent* event; // the song's
};

using EventSchedule = std::vector<ScheduledEvent>;

// The sample nearest to a time.
std::int64_t frameAt(double seconds, double sampleRate);

// The events of `song` that `isWanted` says yes to, in order, each at its nearest sample. The song
// must outlive the schedule.
EventSchedule scheduleEvents(const Song& song, double sampleRate,
                             const std::function<bool(const SongEvent&)>& isWanted);
EventSchedule scheduleEvents(const Song& song, double sampleRate);

} // namespace zelvatone
