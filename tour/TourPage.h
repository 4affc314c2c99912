// The page that shows the tour.
#pragma once

#include "tour/TourStop.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zelvatone {

struct Tour {
    std::string instrument;
    std::string plugin; // the file that was named with --plugin; empty without it
    std::string keys;   // the address of a page to play the programs on; empty without one
    double phraseSeconds = 0.0;
    std::vector<TourStop> stops;
};

// The texts of the tour by file name, besides the stops' own files.
using TourTexts = std::map<std::string, std::string>;

// To be opened from its folder: one page with its style and script inside, and what it shows as
// JSON.
TourTexts tourTexts(const Tour& tour);
// To be put on a web server: style and script in files of their own, which a browser keeps, and no
// folder of this machine. All links are relative.
TourTexts siteTexts(const Tour& tour);

// Whether a folder holds a tour or a site and nothing else, so that a new one may take its place.
bool holdsOnlyATour(const std::filesystem::path& folder);

} // namespace zelvatone
