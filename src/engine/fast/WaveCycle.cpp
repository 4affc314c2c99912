#include "engine/fast/WaveCycle.h"

#include "engine/WaveTable.h"

#include <algorithm>

namespace zelvatone {

WaveCycle::WaveCycle(const VoiceSettings* settings)
    : settings(settings), entries(static_cast<std::size_t>(2 * settings->tableSize + 1)) {}

bool WaveCycle::renew() {
    const wavetable::Readout readout(*settings);
    if (readout.length < 1 || readout.length > settings->tableSize) {
        return false;
    }
    // The table is built anew exactly when one of these two changes.
    if (readout.length != length || settings->waveKind != waveKind ||
        settings->crushBits != crushBits) {
        length = readout.length;
        waveKind = settings->waveKind;
        crushBits = settings->crushBits;
        scale = readout.scale;
        float* entry = entries.data() + settings->tableSize;
        std::copy_n(settings->table.get(), length, entry);
        std::copy_n(settings->table.get(), length, entry - length);
        entry[length] = entry[0];
    }
    return true;
}

} // namespace zelvatone
