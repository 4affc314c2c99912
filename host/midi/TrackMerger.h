// The messages of all tracks of a file in the order of their time.
#pragma once

#include "host/midi/MidiFile.h"
#include "host/midi/MidiTrackParser.h"

#include <cstdint>
#include <queue>
#include <span>
#include <utility>
#include <vector>

namespace zelvatone {

// Reads the tracks side by side, so no message is kept. Among equal ticks, earlier tracks come
// first and each track keeps its order.
class TrackMerger {
public:
    // `file` outlives the merger.
    explicit TrackMerger(const MidiFile& file);

    // Goes to the next message; false after the last one.
    bool next();
    std::int64_t tick() const { return parsers_[current_].tick(); }
    // Until the next one is read; see MidiTrackParser.
    std::span<const std::uint8_t> message() const { return parsers_[current_].message(); }

private:
    void advance(std::size_t track);

    using Waiting = std::pair<std::int64_t, std::size_t>; // tick and track
    std::vector<MidiTrackParser> parsers_;
    std::priority_queue<Waiting, std::vector<Waiting>, std::greater<>> waiting_;
    std::size_t current_ = 0;
    bool hasBegun_ = false;
};

} // namespace zelvatone
