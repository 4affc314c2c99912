// The page that shows the tour.
#pragma once

#include "tour/TourStop.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zelvatone {

// The whole page: one file of HTML with its style and script inside, which names the stops' files
// and nothing else.
std::string tourPage(const std::string& instrument, double phraseSeconds,
                     const std::vector<TourStop>& stops);

// Whether a folder holds a tour and nothing else, so that a new tour may take its place.
bool holdsOnlyATour(const std::filesystem::path& folder);

// Text as it stands in HTML, inside of quotes too.
std::string htmlText(const std::string& text);

} // namespace zelvatone
