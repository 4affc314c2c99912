// Lines on standard error that are no errors.
#pragma once

#include <string>

namespace zelvatone {

// Prints "zelvatone: LINE", with what could steer a terminal taken out.
void printNotice(const std::string& line);

} // namespace zelvatone
