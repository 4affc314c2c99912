// Notes that a song begins and does not end.
#pragma once

#include "host/midi/Song.h"

namespace zelvatone {

// How many there are: a note that is struck again counts once, as one note-off ends it. All sound
// off and all notes off end those of their channel.
int endlessNotes(const Song& song);

} // namespace zelvatone
