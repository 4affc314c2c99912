// Numbers in texts that machines read: with a point in every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

// The shortest decimal that reads back as the same float.
std::string exactText(float value);

// The number that the whole of `text` stands for, rounded to the nearest float or double; none for
// any other text: blanks, a plus sign or a number out of range.
std::optional<float> floatIn(std::string_view text);
std::optional<double> doubleIn(std::string_view text);

} // namespace zelvatone
