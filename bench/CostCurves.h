// What share of a core more notes and more modes take: the numbers of the picture.
#pragma once

#include "engine/fast/KernelChoice.h"

#include <cstdint>
#include <vector>

namespace bench {

struct CostPoint {
    zelvatone::Renderer renderer;
    std::int32_t notes;
    std::int32_t modes; // of each note
    double coreShare;
};

// From 1 to 100 modes with all 32 voices sounding, then from 1 note of 100 modes up.
std::vector<CostPoint> measureCostCurves();

} // namespace bench
