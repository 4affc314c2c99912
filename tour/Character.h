// The words by which a musician finds a sound, measured.
#pragma once

#include "tour/NoteMeasures.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

struct CharacterTag {
    std::string_view name; // one word of small letters
    std::string_view rule; // when it applies, in a sentence about the measured note
    bool (*applies)(const NoteMeasures&);
};

// All tags, in the order in which they are told.
std::span<const CharacterTag> characterTags();

// The names of those that apply. A silent note has none.
std::vector<std::string> charactersOf(const NoteMeasures& measures);

// One line: the tags, and the numbers that say most: "Plucked, bass. Strongest at 110 Hz; down by
// 20 dB after 0.3 s."
std::string descriptionOf(const NoteMeasures& measures);

} // namespace zelvatone
