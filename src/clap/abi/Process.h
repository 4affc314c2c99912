// The records of CLAP that a block of audio consists of. See Plugin.h.
#pragma once

#include "clap/abi/Events.h"

#include <cstdint>

namespace zelvatone::clap {

struct AudioBuffer {
    float** data32; // by channel; null if the samples are doubles
    double** data64;
    std::uint32_t channelCount;
    std::uint32_t latency;
    std::uint64_t constantMask; // a bit for each channel whose samples are all the same
};

struct Process {
    std::int64_t steadyTime; // samples; -1 for unknown
    std::uint32_t frameCount;
    const TransportEvent* transport; // at the first sample; null without a transport
    const AudioBuffer* audioInputs;
    AudioBuffer* audioOutputs;
    std::uint32_t audioInputCount;
    std::uint32_t audioOutputCount;
    const InputEvents* inEvents;
    const OutputEvents* outEvents;
};

enum ProcessStatusCode : std::int32_t {
    kProcessError = 0,
    kProcessContinue = 1,
    kProcessContinueIfNotQuiet = 2,
    kProcessTail = 3,
    kProcessSleep = 4 // call again when there is an event
};
using ProcessStatus = std::int32_t;

} // namespace zelvatone::clap
