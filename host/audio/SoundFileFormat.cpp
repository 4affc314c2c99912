#include "host/audio/SoundFileFormat.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Names.h"

namespace zelvatone {

Container containerOf(const std::filesystem::path& path) {
    const std::string extension = lowerCase(path.extension().string());
    if (extension == ".wav") {
        return Container::kWav;
    }
    if (extension == ".flac") {
        return Container::kFlac;
    }
    if (extension == ".ogg") {
        return Container::kOgg;
    }
    throw UsageError(
        formatText("cannot tell the kind of file from '{}': end its name in .wav, .flac or .ogg",
                   path.string()));
}

SampleKind sampleKindOf(const std::string& text) {
    if (text == "16") {
        return SampleKind::kInt16;
    }
    if (text == "24") {
        return SampleKind::kInt24;
    }
    if (text == "float") {
        return SampleKind::kFloat;
    }
    throw UsageError(formatText("unknown format '{}': 16, 24 and float are known", text));
}

void checkFormat(const SoundFileFormat& format) {
    if (format.container == Container::kFlac && format.samples == SampleKind::kFloat) {
        throw UsageError("FLAC holds whole numbers only: choose --format 16 or 24, or a .wav file");
    }
}

int bytesPerSample(SampleKind kind) {
    switch (kind) {
    case SampleKind::kInt16:
        return 2;
    case SampleKind::kInt24:
        return 3;
    default:
        return 4;
    }
}

std::int64_t leastFileSize(const SoundFileFormat& format, std::int64_t frames) {
    return format.container == Container::kWav
               ? frames * format.channels * bytesPerSample(format.samples)
               : 0;
}

int wholeNumberBits(const SoundFileFormat& format) {
    if (format.container == Container::kOgg || format.samples == SampleKind::kFloat) {
        return 0;
    }
    return format.samples == SampleKind::kInt16 ? 16 : 24;
}

} // namespace zelvatone
