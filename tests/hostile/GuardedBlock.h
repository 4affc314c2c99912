// A block of stereo audio between zones that stay as they are.
#pragma once

#include "tests/plugin/HostedEffect.h"

#include <cstddef>
#include <vector>

namespace zelvatone::test {

// One thread at a time.
class GuardedBlock {
public:
    // Renders `frames` samples (0 or more) and keeps watch: nothing beside the block is written,
    // every sample of it is, and both channels hold the same bits.
    void render(const HostedEffect& effect, VstInt32 frames);
    bool isFinite() const;
    bool hasBitsOf(const GuardedBlock& other) const;

private:
    void prepare(std::vector<float>& channel) const;
    void check(const std::vector<float>& channel) const;

    std::vector<float> left_;
    std::vector<float> right_;
    std::size_t frames_ = 0;
};

} // namespace zelvatone::test
