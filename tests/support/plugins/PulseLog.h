// What the pulse instrument saw, handed to tests through its vendor's own request.
#pragma once

#include "vst2/aeffectx.h"

#include <string>
#include <vector>

struct PulseEvent {
    long long block; // counted from 0
    VstInt32 offset; // samples in the block
    std::vector<unsigned char> bytes;
};

struct PulseLog {
    // From inside the entry point.
    VstIntPtr versionBeforeRecord = 0;
    VstIntPtr rateInConstruction = 0;
    VstInt32 timeFlagsInConstruction = -1;
    // From playing.
    std::vector<VstTimeInfo> times; // one a block, asked for everything
    std::vector<PulseEvent> events;
    std::vector<VstIntPtr> processLevels;
    std::vector<std::string> requests; // of the order that matters: rate, block size, on, off
};

constexpr VstInt32 kPulseLogRequest = vstFourCharacters('p', 'l', 'o', 'g');
