// A song's events at samples.
#pragma once

#include "host/midi/Song.h"

#include <cstdint>
#include <functional>
#include <span>

namespace zelvatone {

// The sample nearest to a time.
std::int64_t frameAt(double seconds, double sampleRate);

// Goes through the events of a song that one part plays, each at its nearest sample. Keeps no list
// of them: many parts play one song.
class EventSchedule {
public:
    using Filter = std::function<bool(const SongEvent&)>;

    // All events for which `isWanted` holds, in order. The song outlives the schedule; rate in Hz.
    EventSchedule(const Song& song, double sampleRate, Filter isWanted);

    bool atEnd() const { return position_ == song_->events.size(); }
    // Of the event that is due next; not at the end.
    std::int64_t frame() const { return frame_; } // from the start of the song
    std::span<const std::uint8_t> message() const;
    void advance();

private:
    void findWanted();

    const Song* song_;
    double sampleRate_;
    Filter isWanted_;
    std::size_t position_ = 0; // of the event that is due next
    std::int64_t frame_ = 0;
};

// All events of the song.
EventSchedule scheduleEvents(const Song& song, double sampleRate);

} // namespace zelvatone
