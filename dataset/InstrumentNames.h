// What the instrument's parts are called.
#pragma once

#include <string>
#include <vector>

namespace zelvatone {

// Of the parameters that are shown, by index, and of the factory programs, by number. Constant;
// any thread.
const std::vector<std::string>& shownParameterNames();
const std::vector<std::string>& factoryNames();

} // namespace zelvatone
