#include "engine/fast/DropFactors.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

void DropFactors::update(float factor, std::int32_t modulus) {
    if (factor == factor_ && modulus == modulus_) {
        return;
    }
    factor_ = factor;
    modulus_ = modulus;
    ofRun_ = std::pow(factor, float{kRunSamples});
    for (std::int32_t mode = 0; mode < kPaddedModes; ++mode) {
        factors_[mode] = modulus < 2 || mode % modulus == 1 ? factor : 1.0F;
    }
}

void DropFactors::describe(BlockConstants& constants) const {
    constants.dropFactors = factors_.data();
    constants.drops = factor_ != 1.0F;
    constants.dropsGliding = modulus_ < 2;
    constants.dropGrowth = std::max(ofRun_, 1.0F);
    // With room for the roundings of a run: two a sample, each by up to 2^-24 of what the drop has
    // made of the frequency by then.
    constants.dropChange = std::fabs(ofRun_ - 1.0F) * 1.0001F + 2.0e-5F;
}

} // namespace zelvatone
