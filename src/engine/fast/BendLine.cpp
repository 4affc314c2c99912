#include "engine/fast/BendLine.h"

#include <algorithm>

namespace zelvatone {

void BendLine::hold(float radiansPerHz) {
    if (phaseAdvance_.varies || phaseAdvance_.most != radiansPerHz) {
        std::fill_n(phaseAdvance_.radiansPerHz, kRunSamples, radiansPerHz);
        phaseAdvance_.most = radiansPerHz;
        phaseAdvance_.varies = false;
    }
}

void BendLine::bend(std::int32_t sample, float radiansPerHz) {
    std::fill(phaseAdvance_.radiansPerHz + sample, phaseAdvance_.radiansPerHz + kRunSamples,
              radiansPerHz);
    phaseAdvance_.most = std::max(phaseAdvance_.most, radiansPerHz);
    phaseAdvance_.varies = true;
}

} // namespace zelvatone
