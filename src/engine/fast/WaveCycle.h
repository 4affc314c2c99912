// The wave table as the kernels read it.
#pragma once

#include "engine/VoiceSettings.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

// A copy of the entries in use with the same cycle once more in front of it and its first entry
// behind it: a phase between -2 pi and 2 pi finds its entry without a comparison. At the very end
// stands a 0 for look-ups that fail. Derived from the settings. Audio thread.
class WaveCycle {
public:
    // `settings` is not owned, must outlive the cycle and has a table.
    explicit WaveCycle(const VoiceSettings* settings);

    // Follows the settings. It can be read with any number of entries in use that "Chop" can set: 0
    // to the table's size.
    void update();
    bool isReadable() const { return isReadable_; }

    // Entry 0. Entries -length..length can be read.
    const float* middle() const { return entries_.data() + settings_->tableSize; }
    float entriesPerRadian() const { return scale_; }
    // Entries from here on, either way, are not in use; 0 if none is.
    float indexLimit() const { return length_ == 0 ? 0.0F : static_cast<float>(length_ + 1); }
    // Where the 0 stands.
    std::int32_t silentEntry() const { return settings_->tableSize + 1; }

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
