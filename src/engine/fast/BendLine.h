// The pitch bend over the samples of a run.
#pragma once

#include "engine/fast/ModeKernel.h"

#include <cstdint>

namespace zelvatone {

// Audio thread.
class BendLine {
public:
    // Every sample of the run advances phases by this much for each Hz.
    void hold(float radiansPerHz);
    // So does every sample of the run from `sample` on, 1..kRunSamples - 1.
    void bend(std::int32_t sample, float radiansPerHz);

    const PhaseAdvance& phaseAdvance() const { return phaseAdvance_; }

private:
    PhaseAdvance phaseAdvance_{};
};

} // namespace zelvatone
