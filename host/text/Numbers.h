// Numbers in text, with a point in every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

// The number that all of `text` spells; none for anything else, out of range included.
std::optional<int> wholeNumber(std::string_view text);
// The same; "nan" and "inf" are not numbers either.
std::optional<double> realNumber(std::string_view text);

// The shortest decimal that reads back as the same float.
std::string shortestText(float number);

// The same as the double next to that decimal: 0.2F becomes 0.2 and not 0.20000000298.
double shortestDouble(float number);

} // namespace zelvatone
