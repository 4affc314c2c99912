#include "host/render/EventSchedule.h"

#include <cmath>

namespace zelvatone {

std::int64_t frameAt(double seconds, double sampleRate) {
    return std::llround(seconds * sampleRate);
}

EventSchedule scheduleEvents(const Song& song, double sampleRate,
                             const std::function<bool(const SongEvent&)>& isWanted) {
    EventSchedule schedule;
    for (const SongEvent& event : song.events) {
        if (isWanted(event)) {
            schedule.push_back({frameAt(event.seconds, sampleRate), &event});
        }
    }
    return schedule;
}

EventSchedule scheduleEvents(const Song& song, double sampleRate) {
    return scheduleEvents(song, sampleRate, [](const SongEvent&) { return true; });
}

} // namespace zelvatone
