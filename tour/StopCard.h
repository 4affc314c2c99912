// What the page shows of one program.
#pragma once

#include "tour/TourStop.h"

#include <string>

namespace zelvatone {

// The line for a shell that renders a song with this program. `plugin`: the file that was named
// with --plugin; empty without it.
std::string renderCommand(const TourStop& stop, const std::string& plugin);

// The program's part of the list.
std::string stopCard(const TourStop& stop, double phraseSeconds, const std::string& plugin);
// Its line in the index beside the list.
std::string indexLine(const TourStop& stop);

} // namespace zelvatone
