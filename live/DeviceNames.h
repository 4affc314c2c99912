// How a user names a device: by a part of its name, in letters of either case.
#pragma once

#include "host/text/Names.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zelvatone {

inline bool matchesDevice(const std::string& name, const std::string& wanted) {
    return lowerCase(name).find(lowerCase(wanted)) != std::string::npos;
}

// Whether a keyboard is one of those that were chosen; without a choice all are.
inline bool isChosenInput(const std::string& name, const std::vector<std::string>& choice) {
    return choice.empty() || std::any_of(choice.begin(), choice.end(), [&name](const auto& wanted) {
               return matchesDevice(name, wanted);
           });
}

} // namespace zelvatone
