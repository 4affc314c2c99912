// The files of the folder page/, as they are when the program is built.
#pragma once

#include <string_view>

namespace zelvatone::pageparts {

extern const std::string_view kPage;
extern const std::string_view kStop;
extern const std::string_view kStyle;
extern const std::string_view kScript;

} // namespace zelvatone::pageparts
