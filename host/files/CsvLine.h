// One line of a file of comma-separated values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// The fields, without space around them. A field in quotes holds commas too, and a quote where two
// stand. Throws InputError for quotes that do not end where the field does.
std::vector<std::string> csvFields(std::string_view line);

} // namespace zelvatone
