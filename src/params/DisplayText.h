// Numbers as the parameter displays show them.
#pragma once

#include <string>

namespace zelvatone {

// `value` with a fixed number of decimals, like the C format "%.*f" but always with a point: a
// host may have set a locale in which the C library writes a comma.
std::string fixedText(double value, int decimals);

} // namespace zelvatone
