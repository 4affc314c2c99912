// Turns samples into the bytes of a sound file.
#pragma once

#include "host/audio/SoundFileFormat.h"
#include "host/files/ByteTarget.h"

#include <cstdint>
#include <memory>
#include <span>

namespace zelvatone {

// Whatever a call writes goes to the file, which remembers a failure: errors of the disk are told
// by ByteTarget::check(), all others by InputError.
class SoundEncoder {
public:
    SoundEncoder() = default;
    virtual ~SoundEncoder() = default;
    SoundEncoder(const SoundEncoder&) = delete;
    SoundEncoder& operator=(const SoundEncoder&) = delete;

    // Appends samples, channels interleaved: floating-point ones, or, for a format of whole
    // numbers, those numbers in the upper bits of each place.
    virtual void write(std::span<const float> samples) = 0;
    virtual void write(std::span<const std::int32_t> numbers) = 0;
    // Completes the file. Nothing can be written afterwards.
    virtual void finish() = 0;
};

// `file` is new and outlives the encoder. Throws UsageError for a container that the platform does
// not write: Windows has WAV alone.
std::unique_ptr<SoundEncoder> makeSoundEncoder(ByteTarget& file, const SoundFileFormat& format);

} // namespace zelvatone
