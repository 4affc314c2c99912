// Texts as Turtle, the language of a bundle's description, writes them.
#pragma once

#include <string>
#include <string_view>

namespace zelvatone::lv2 {

// `text` in quotation marks.
std::string quoted(std::string_view text);

// `uri` in angle brackets.
std::string turtleUri(std::string_view uri);

// The shortest decimal that reads back as exactly `value`. Always with a point and never with an
// exponent: a reader takes "1" for a whole number, which some hosts then read as a float's bits.
std::string decimal(float value);

} // namespace zelvatone::lv2
