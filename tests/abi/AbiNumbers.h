// What two headers of the same binary interface have to agree about, as a table of each.
#pragma once

#include <string>
#include <vector>

struct AbiNumber {
    std::string name;
    long long number; // bytes for a size or an offset, else the constant itself
};

// One table each, from the very same lines (SharedNumbers.inc), compiled against either header: the
// two give the same names to different types, so no single source can include both.
std::vector<AbiNumber> ourNumbers();
std::vector<AbiNumber> independentNumbers();
