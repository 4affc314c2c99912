#include "host/render/EventSchedule.h"

#include <cmath>
#include <utility>

namespace zelvatone {

std::int64_t frameAt(double seconds, double sampleRate) {
    return std::llround(seconds * sampleRate);
}

EventSchedule::EventSchedule(const Song& song, double sampleRate, Filter isWanted)
    : song_(&song), sampleRate_(sampleRate), isWanted_(std::move(isWanted)) {
    findWanted();
}

// Goes on from the present position to the next event that is wanted, or to the end.
void EventSchedule::findWanted() {
    while (!atEnd() && !isWanted_(song_->events[position_])) {
        ++position_;
    }
    if (!atEnd()) {
        frame_ = frameAt(song_->events[position_].seconds, sampleRate_);
    }
}

void EventSchedule::advance() {
    ++position_;
    findWanted();
}

std::span<const std::uint8_t> EventSchedule::message() const {
    return song_->message(song_->events[position_]);
}

EventSchedule scheduleEvents(const Song& song, double sampleRate) {
    return {song, sampleRate, [](const SongEvent&) { return true; }};
}

} // namespace zelvatone
