#include "engine/fast/WaveCycle.h"

#include "engine/WaveTable.h"

#include <algorithm>

namespace zelvatone {

WaveCycle::WaveCycle(const VoiceSettings* settings)
    : settings_(settings), entries_(static_cast<std::size_t>(2 * settings->tableSize + 2)) {}

void WaveCycle::update() {
    const wavetable::Readout readout(*settings_);
    isReadable_ = readout.length >= 0 && readout.length <= settings_->tableSize;
    if (!isReadable_) {
        return;
    }
    // The table is built anew exactly when one of these two changes.
    if (readout.length != length_ || settings_->waveKind != waveKind_ ||
        settings_->crushBits != crushBits_) {
        length_ = readout.length;
        waveKind_ = settings_->waveKind;
        crushBits_ = settings_->crushBits;
        scale_ = readout.scale;
        float* entry = entries_.data() + settings_->tableSize;
        std::copy_n(settings_->table.get(), length_, entry);
        std::copy_n(settings_->table.get(), length_, entry - length_);
        entry[length_] = entry[0];
    }
}

} // namespace zelvatone
