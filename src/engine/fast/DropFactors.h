// "Freq Drop" and "Drop Mod" as the kernels read them.
#pragma once

#include "engine/fast/ModeKernel.h"

#include <array>
#include <cstdint>

namespace zelvatone {

// What one sample of drop does to each mode, and bounds for what a run of it does. Derived from the
// settings. Audio thread.
class DropFactors {
public:
    // Follows the two settings.
    void update(float factor, std::int32_t modulus);
    // Fills in what `constants` says of the drop; its factors are those of this object.
    void describe(BlockConstants& constants) const;

private:
    std::array<float, kPaddedModes> factors_{}; // of these two settings:
    float factor_ = 0.0F;
    std::int32_t modulus_ = 0;
    float ofRun_ = 1.0F; // the factor of a whole run
};

} // namespace zelvatone
