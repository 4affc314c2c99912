// The files of the folder page/, as they are when the program is built.
#pragma once

#include <string_view>

namespace zelvatone::pageparts {

extern const std::string_view page;
extern const std::string_view stop;
extern const std::string_view style;
extern const std::string_view script;

} // namespace zelvatone::pageparts
