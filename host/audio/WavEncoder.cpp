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

// The place of the PEAK chunk, which files with floats may have: a version, a time of day, and a
// level and its position for each channel. The time would make every file another one, so the place
// stays empty, and readers skip it.
void appendPadding(ChunkWriter& chunks, int channels) {
    const int size = 8 + 8 * channels;
    chunks.name("PAD ");
    chunks.number(size, 4);
    chunks.bytes.resize(chunks.bytes.size() + static_cast<std::size_t>(size));
}

} // namespace

WavEncoder::WavEncoder(ByteTarget& file, const SoundFileFormat& format)
    : file_(file), format_(format) {
    put(header());
}

void WavEncoder::put(const std::vector<char>& bytes) {
    file_.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
}

// Appends the upper `size` bytes of each sample's 32 bits, the lowest of them first.
template<int size, typename Sample>
void WavEncoder::putSamples(std::span<const Sample> samples) {
    bytes_.resize(samples.size() * size);
    char* target = bytes_.data();
    for (const Sample sample : samples) {
        const auto bits = std::bit_cast<std::uint32_t>(sample);
        for (int i = 4 - size; i < 4; ++i) {
            *target++ = static_cast<char>(bits >> (8 * i));
        }
    }
    dataBytes_ += static_cast<std::int64_t>(bytes_.size());
    put(bytes_);
}

void WavEncoder::write(std::span<const float> samples) {
    if constexpr (std::endian::native == std::endian::little) { // as they lie in memory
        const auto bytes = static_cast<std::int64_t>(samples.size_bytes());
        dataBytes_ += bytes;
        file_.write(samples.data(), bytes);
    } else {
        putSamples<4>(samples);
    }
}

void WavEncoder::write(std::span<const std::int32_t> numbers) {
    if (format_.samples == SampleKind::kInt16) {
        putSamples<2>(numbers);
    } else {
        putSamples<3>(numbers);
    }
}

// Readers of files with floats look for the number of frames in a chunk of its own.
std::vector<char> WavEncoder::header() const {
    const bool isFloat = format_.samples == SampleKind::kFloat;
    const int sampleBytes = bytesPerSample(format_.samples);
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
        appendPadding(chunks, format_.channels);
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
