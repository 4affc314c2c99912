// The wave table as the kernels read it.
#pragma once

#include "engine/VoiceSettings.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

// A copy of the entries in use with the same cycle once more in front of it and its first entry
// behind it: a phase between -2 pi and 2 pi finds its entry without a comparison. Derived from the
// settings. Audio thread.
class WaveCycle {
public:
    // `settings` is not owned, must outlive the cycle and has a table.
    explicit WaveCycle(const VoiceSettings* settings);

    // Follows the settings. With entries in use from 1 to the table's size it can be read.
    void update();
    bool isReadable() const { return isReadable_; }

    // Entry 0. Entries -length..length can be read.
    const float* middle() const { return entries_.data() + settings_->tableSize; }
    float entriesPerRadian() const { return scale_; }

private:
    const VoiceSettings* settings_;
    std::vector<float> entries_;
    bool isReadable_ = false;
    // What the entries stand for.
    std::int32_t length_ = 0;
    std::int32_t waveKind_ = 0;
    std::int32_t crushBits_ = 0;
    float scale_ = 0.0F;
};

} // namespace zelvatone
