// What the tour knows, for other programs.
#pragma once

#include <string>

namespace zelvatone {

struct Tour;

// JSON: the tags with their rules, and of each program its tags, description, levels, measures and
// files.
std::string tourData(const Tour& tour);

} // namespace zelvatone
