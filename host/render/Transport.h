// The position in the music at each sample, for plug-ins that ask.
#pragma once

#include "host/midi/Song.h"
#include "vst2/aeffectx.h"

#include <cstdint>

namespace zelvatone {

class Transport {
public:
    // `song` must outlive the transport; `sampleRate` in Hz.
    Transport(const Song& song, double sampleRate);

    // The time record for a block that starts at `frame`, 0 or later. Playing starts with frame 0
    // and goes on past the song's end for as long as the host renders.
    VstTimeInfo at(std::int64_t frame) const;

private:
    const Song& song_;
    double sampleRate_;
};

} // namespace zelvatone
