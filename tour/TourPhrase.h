// What every program plays on the tour.
#pragma once

#include "host/midi/Song.h"

namespace zelvatone {

// Short notes upwards from a low one, then a chord that lasts long enough for slow sounds to
// unfold, and time for it to end: six seconds at 120 quarter notes a minute.
Song tourPhrase();

} // namespace zelvatone
