// What the page shows of one program.
#pragma once

#include "tour/TourStop.h"

#include <string>

namespace zelvatone {

// The line for a shell that renders a song with this program. `plugin`: the file that was named
// with --plugin; empty without it.
std::string renderCommand(const TourStop& stop, const std::string& plugin);

// The link to the program on a page with keys at the address `keys`; empty without one.
std::string keysLink(const TourStop& stop, const std::string& keys);

struct Tour;
// The program's part of the list.
std::string stopCard(const TourStop& stop, const Tour& tour);
// Its line in the index beside the list.
std::string indexLine(const TourStop& stop);

} // namespace zelvatone
