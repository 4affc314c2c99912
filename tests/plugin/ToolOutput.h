// What programs print that look into files.
#pragma once

#include <string>
#include <vector>

std::string outputOf(const std::string& command);

// The last word of each line that contains `mark`.
std::vector<std::string> lastWords(const std::string& lines, const std::string& mark);
