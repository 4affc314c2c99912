// Notes that a song begins and does not end.
#pragma once

#include "host/midi/Song.h"

#include <functional>

namespace zelvatone {

// How many there are of the events for which `isPlayed` holds, as Controllers plays them: the
// sustain pedal holds notes, and all sound off and all notes off end them. A note that is struck
// again counts once, as one note-off ends it.
int endlessNotes(const Song& song, const std::function<bool(const SongEvent&)>& isPlayed);
// Of all events.
int endlessNotes(const Song& song);

} // namespace zelvatone
