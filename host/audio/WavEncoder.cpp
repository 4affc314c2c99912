#include "host/audio/WavEncoder.h"

#include <bit>
#include <cstdio>
#include <string_view>

namespace zelvatone {

namespace {

// A WAV file is RIFF: chunks of a name, a size and so many bytes, numbers with their lowest byte
// first.
class ChunkWriter {
public:
    void name(std::string_view letters) {
        bytes.insert(bytes.end(), letters.begin(), letters.end());
    }
    void number(std::int64_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes.push_back(static_cast<char>(value >> (8 * i)));
        }
    }

    std::vector<char> bytes;
};

constexpr std::int64_t kPlainNumbers = 1; // the kinds of sample, as the format counts them
constexpr std::int64_t kFloats = 3;

int bytesOf(SampleKind kind) {
    switch (kind) {
    case SampleKind::Int16:
        return 2;
    case SampleKind::Int24:
        return 3;
    default:
        return 4;
    }
}

} // namespace

WavEncoder::WavEncoder(OutputFile& file, const SoundFileFormat& format)
    : file_(file), format_(format) {
    put(header());
}

void WavEncoder::put(const std::vector<char>& bytes) {
    file_.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
}

void WavEncoder::write(std::span<const float> samples) {
    ChunkWriter data;
    for (const float sample : samples) {
        data.number(std::bit_cast<std::int32_t>(sample), bytesOf(SampleKind::Float));
    }
    dataBytes_ += static_cast<std::int64_t>(data.bytes.size());
    put(data.bytes);
}

void WavEncoder::write(std::span<const std::int32_t> numbers) {
    const int size = bytesOf(format_.samples);
    ChunkWriter data;
    for (const std::int32_t number : numbers) {
        data.number(number >> (32 - 8 * size), size);
    }
    dataBytes_ += static_cast<std::int64_t>(data.bytes.size());
    put(data.bytes);
}

// Readers of files with floats look for the number of frames in a chunk of its own.
std::vector<char> WavEncoder::header() const {
    const bool isFloat = format_.samples == SampleKind::Float;
    const int sampleBytes = bytesOf(format_.samples);
    const int frameBytes = sampleBytes * format_.channels;
    ChunkWriter chunks;
    chunks.name("fmt ");
    chunks.number(16, 4); // the sizes of what follows, to the end of the chunk
    chunks.number(isFloat ? kFloats : kPlainNumbers, 2);
    chunks.number(format_.channels, 2);
    chunks.number(format_.sampleRate, 4);
    chunks.number(std::int64_t{format_.sampleRate} * frameBytes, 4);
    chunks.number(frameBytes, 2);
    chunks.number(std::int64_t{8} * sampleBytes, 2);
    if (isFloat) {
        chunks.name("fact");
        chunks.number(4, 4);
        chunks.number(dataBytes_ / frameBytes, 4);
    }
    chunks.name("data");
    chunks.number(dataBytes_, 4);

    constexpr std::int64_t kWaveName = 4; // bytes; it counts as part of what follows
    ChunkWriter file;
    file.name("RIFF");
    file.number(kWaveName + static_cast<std::int64_t>(chunks.bytes.size()) + dataBytes_ +
                    dataBytes_ % 2,
                4);
    file.name("WAVE");
    file.bytes.insert(file.bytes.end(), chunks.bytes.begin(), chunks.bytes.end());
    return file.bytes;
}

// Chunks begin at even places.
void WavEncoder::finish() {
    if (dataBytes_ % 2 != 0) {
        put({'\0'});
    }
    file_.seek(0, SEEK_SET);
    put(header());
    file_.check();
}

} // namespace zelvatone
