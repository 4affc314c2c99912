// The renderers side by side: the reference renderer and every kernel that this processor has take
// turns at the same load, so that what else the machine does hits all of them.
#pragma once

#include "bench/Loads.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// What one renderer takes for one load. Ratios say how many times less than the reference renderer.
struct Row {
    std::string kind; // "steady" or "worst"
    std::string load;
    zelvatone::Renderer renderer;
    double cost; // steady: share of a core; worst: seconds
    double ratio, lowerQuartile, upperQuartile;
    std::uint64_t hash; // of the samples: a faster wrong sound is no gain
    bool sameSound;     // as the reference renderer's
};

// The reference renderer first, as the measure of all others. With ZELVATONE_KERNEL in the
// environment, only the renderer of that name stands beside it.
std::vector<zelvatone::Renderer> renderersToCompare();

std::vector<Row> compareSteady(const Load& load);
std::vector<Row> compareWorstBlocks(const Load& load);

} // namespace bench
