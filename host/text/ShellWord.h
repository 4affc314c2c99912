// Texts for a shell.
#pragma once

#include <string>

namespace zelvatone {

// A word that a shell takes as it is, in quotes where it needs them.
std::string shellWord(const std::string& word);

} // namespace zelvatone
