#include "engine/fast/LookupReport.h"

#include "engine/WaveTable.h"

#include <algorithm>
#include <tuple>

namespace zelvatone {

void printFailedLookups(FailedLookups& failures, const VoiceSettings& settings) {
    if (failures.count == 0) {
        return;
    }
    const auto place = [](const FailedLookup& f) { return std::tie(f.sample, f.slot, f.mode); };
    std::sort(failures.list, failures.list + failures.count,
              [&](const auto& a, const auto& b) { return place(a) < place(b); });
    const wavetable::Readout readout(settings);
    for (std::int32_t i = 0; i < failures.count; ++i) {
        wavetable::printFailedLookup(readout, failures.list[i].phase);
    }
    failures.count = 0;
}

} // namespace zelvatone
