// WAV files, the same on every platform.
#pragma once

#include "host/audio/SoundEncoder.h"

#include <vector>

namespace zelvatone {

class WavEncoder final : public SoundEncoder {
public:
    // `format` is one of WAV files. The header is written with finish(), over the place that is
    // kept for it.
    WavEncoder(ByteTarget& file, const SoundFileFormat& format);

    void write(std::span<const float> samples) override;
    void write(std::span<const std::int32_t> numbers) override;
    void finish() override;

private:
    std::vector<char> header() const;
    template<int size, typename Sample>
    void putSamples(std::span<const Sample> samples);
    void put(const std::vector<char>& bytes);

    ByteTarget& file_;
    SoundFileFormat format_;
    std::int64_t dataBytes_ = 0;
    std::vector<char> bytes_; // of the last write()
};

} // namespace zelvatone
