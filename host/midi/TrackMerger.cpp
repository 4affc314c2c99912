#include "host/midi/TrackMerger.h"

namespace zelvatone {

TrackMerger::TrackMerger(const MidiFile& file) {
    parsers_.reserve(file.tracks.size());
    for (const MidiTrack& track : file.tracks) {
        parsers_.emplace_back(track.bytes, track.number);
        advance(parsers_.size() - 1);
    }
}

void TrackMerger::advance(std::size_t track) {
    if (parsers_[track].next()) {
        waiting_.emplace(parsers_[track].tick(), track);
    }
}

bool TrackMerger::next() {
    if (hasBegun_) {
        advance(current_);
    }
    if (waiting_.empty()) {
        return false;
    }
    hasBegun_ = true;
    current_ = waiting_.top().second;
    waiting_.pop();
    return true;
}

} // namespace zelvatone
