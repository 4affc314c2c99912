// WAV files, without any library.
#pragma once

#include "host/audio/SoundEncoder.h"

#include <vector>

namespace zelvatone {

class WavEncoder final : public SoundEncoder {
public:
    // `format` is one of WAV files. The header is written with finish(), over the place that is
    // kept for it.
    WavEncoder(OutputFile& file, const SoundFileFormat& format);

    void write(std::span<const float> samples) override;
    void write(std::span<const std::int32_t> numbers) override;
    void finish() override;

private:
    std::vector<char> header() const;
    void put(const std::vector<char>& bytes);

    OutputFile& file_;
    SoundFileFormat format_;
    std::int64_t dataBytes_ = 0;
};

} // namespace zelvatone
