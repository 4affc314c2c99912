#include "host/audio/SoundFileFormat.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Names.h"

namespace zelvatone {

Container containerOf(const std::filesystem::path& path) {
    const std::string extension = lowerCase(path.extension().string());
    if (extension == ".wav") {
        return Container::Wav;
    }
    if (extension == ".flac") {
        return Container::Flac;
    }
    if (extension == ".ogg") {
        return Container::Ogg;
    }
    throw UsageError(
        formatText("cannot tell the kind of file from '{}': end its name in .wav, .flac or .ogg",
                   path.string()));
}

SampleKind sampleKindOf(const std::string& text) {
    if (text == "16") {
        return SampleKind::Int16;
    }
    if (text == "24") {
        return SampleKind::Int24;
    }
    if (text == "float") {
        return SampleKind::Float;
    }
    throw UsageError(formatText("unknown format '{}': 16, 24 and float are known", text));
}

void checkFormat(const SoundFileFormat& format) {
    if (format.container == Container::Flac && format.samples == SampleKind::Float) {
        throw UsageError("FLAC holds whole numbers only: choose --format 16 or 24, or a .wav file");
    }
}

int bytesPerSample(SampleKind kind) {
    switch (kind) {
    case SampleKind::Int16:
        return 2;
    case SampleKind::Int24:
        return 3;
    default:
        return 4;
    }
}

std::int64_t leastFileSize(const SoundFileFormat& format, std::int64_t frames) {
    return format.container == Container::Wav
               ? frames * format.channels * bytesPerSample(format.samples)
               : 0;
}

int wholeNumberBits(const SoundFileFormat& format) {
    if (format.container == Container::Ogg || format.samples == SampleKind::Float) {
        return 0;
    }
    return format.samples == SampleKind::Int16 ? 16 : 24;
}

} // namespace zelvatone
