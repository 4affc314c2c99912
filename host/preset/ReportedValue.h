// Setting a parameter to a value that a plug-in has reported.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

namespace zelvatone {

// Calls `set`, which sets a parameter and returns what the plug-in reports of it then, both from 0
// to 1, until it returns `value`: with it and with its neighbours among the floats. A value that
// was reported and that is set again may land beside itself through rounding, a whole step lower
// for parameters that round down. Where none of them gives `value`, it is set itself.
template<class Set>
void setAsReported(float value, Set set) {
    const std::array<float, 3> tries{value, std::nextafter(value, 2.0F),
                                     std::nextafter(value, -1.0F)};
    for (const float number : tries) {
        if (set(std::clamp(number, 0.0F, 1.0F)) == value) {
            return;
        }
    }
    set(value);
}

} // namespace zelvatone
