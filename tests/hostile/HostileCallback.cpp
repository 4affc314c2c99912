#include "tests/hostile/HostileCallback.h"

#include <array>
#include <atomic>
#include <limits>

namespace zelvatone::test {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr std::array kTempos = {
    120.0,     1.0,        20000.0, 0.0,   -120.0, std::numeric_limits<double>::quiet_NaN(),
    kInfinity, -kInfinity, 1e300,   1e-300};
constexpr auto kTimes = [] {
    std::array<VstTimeInfo, kTempos.size()> times{};
    for (std::size_t i = 0; i < times.size(); ++i) {
        times[i].tempo = kTempos[i];
        times[i].flags = kVstTempoValid;
    }
    return times;
}();

// Beyond the times above: a time without a tempo, and no time at all.
constexpr VstTimeInfo kWithoutTempo{};
constexpr auto kTimeWithoutTempo = static_cast<VstInt32>(kTimes.size());
constexpr VstInt32 kNoTime = kTimeWithoutTempo + 1;

std::atomic<VstInt32> chosen = 0;

const VstTimeInfo* chosenTime() {
    const VstInt32 index = chosen.load(std::memory_order_relaxed);
    if (index == kNoTime) {
        return nullptr;
    }
    return index == kTimeWithoutTempo ? &kWithoutTempo : &kTimes[static_cast<std::size_t>(index)];
}

} // namespace

VstIntPtr hostileCallback(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr, void*, float) {
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterGetTime:
        return reinterpret_cast<VstIntPtr>(chosenTime());
    default:
        return index - opcode; // whatever, and each time the same
    }
}

VstInt32 timeCount() {
    return kNoTime + 1;
}

void chooseTime(VstInt32 index) {
    chosen.store(index, std::memory_order_relaxed);
}

} // namespace zelvatone::test
