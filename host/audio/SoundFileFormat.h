// The kinds of sound file that the host writes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace zelvatone {

enum class Container { kWav, kFlac, kOgg };
enum class SampleKind { kInt16, kInt24, kFloat };

struct SoundFileFormat {
    Container container = Container::kWav;
    SampleKind samples = SampleKind::kInt24; // OGG has its own and ignores this
    int sampleRate = 44100;                  // Hz
    int channels = 2;
    // FLAC: the same bytes on every processor, about 1 % longer, made in less time. Otherwise the
    // library predicts with floating-point sums whose order depends on the processor.
    bool isPortable = false;
};

// By the file name's extension in any case: .wav, .flac, .ogg. Throws UsageError for any other.
Container containerOf(const std::filesystem::path& path);

// From "16", "24" or "float". Throws UsageError for anything else.
SampleKind sampleKindOf(const std::string& text);

// Throws UsageError for what the container cannot hold: floats in FLAC.
void checkFormat(const SoundFileFormat& format);

// Bytes of one sample of one channel where samples are not compressed.
int bytesPerSample(SampleKind kind);

// Bytes that a file of so many frames has at least: exact for WAV, and 0 for the others, whose size
// depends on the sound.
std::int64_t leastFileSize(const SoundFileFormat& format, std::int64_t frames);

// Bits of the whole numbers that are written; 0 where samples stay floating-point.
int wholeNumberBits(const SoundFileFormat& format);

} // namespace zelvatone
