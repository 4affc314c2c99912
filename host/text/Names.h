// Names as people type and read them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// Letters A to Z equal a to z; every other byte equals itself.
std::string lowerCase(std::string_view text);
bool equalInAnyCase(std::string_view a, std::string_view b);

// The text without space at its end.
std::string_view cleanEnd(std::string_view text);

// "a, b and c" for the last word "and".
std::string wordList(const std::vector<std::string>& words, std::string_view last);

// Up to `most` names, nearest first, by the fewest edits that make a part of the name `wanted` or
// the name a part of `wanted`, in any case: people type a word of a long name, or one too many.
// Without names that are too far off.
std::vector<std::string> nearestNames(const std::vector<std::string>& names,
                                      std::string_view wanted, std::size_t most);

} // namespace zelvatone
