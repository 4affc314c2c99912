// Parts of a plan as people write them.
#pragma once

#include "dataset/DatasetPlan.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone {

// Numbers and ranges with commas between: "36-84,90". Each from `least` to `most`, sorted, none
// twice. Throws UsageError that names `option`.
std::vector<int> numbersOf(std::string_view option, const std::string& text, int least, int most);

// Program names, beginnings of names or numbers with commas between, or "all". Sorted, none twice.
// Throws InputError, and UsageError for a number that is out of range.
std::vector<int> programsOf(const std::string& text);

// "NAME=LOW:HIGH", or "all" for every parameter in its whole range. Two numbers from 0 to 1 are
// normalised values, everything else is in units: "Attack=0:0.5", "Attack=0.01 s:1 s". Throws
// UsageError, and InputError for an unknown parameter.
std::vector<ValueRange> rangesOf(const std::string& text);

// "I/N": the I-th of N parts that the shards are dealt out to, from 1.
struct ShardShare {
    std::int64_t part = 1;
    std::int64_t parts = 1;
};
// Throws UsageError.
ShardShare shareOf(const std::string& text);

} // namespace zelvatone
