#include "audio/SoundFileWriter.h"

#include "Error.h"
#include "audio/OggSerial.h"
#include "audio/SampleFormat.h"

#include <sndfile.h>

#include <string>

namespace zelvatone {

namespace {

OutputFile& fileOf(void* user) {
    return *static_cast<OutputFile*>(user);
}

// The library is never told that a write failed: closing after that, it would leak its encoder.
// The file remembers the failure, and check() tells it better than the library could.
sf_count_t writeToFile(const void* source, sf_count_t count, void* user) {
    fileOf(user).write(source, count);
    return count;
}

sf_count_t readFromFile(void* target, sf_count_t count, void* user) {
    return fileOf(user).read(target, count);
}

sf_count_t seekInFile(sf_count_t offset, int whence, void* user) {
    return fileOf(user).seek(offset, whence);
}

SF_VIRTUAL_IO fileOperations() {
    return {.get_filelen = [](void* user) -> sf_count_t { return fileOf(user).size(); },
            .seek = seekInFile,
            .read = readFromFile,
            .write = writeToFile,
            .tell = [](void* user) -> sf_count_t { return fileOf(user).seek(0, SEEK_CUR); }};
}

int libraryFormat(const SoundFileFormat& format) {
    if (format.container == Container::Ogg) {
        return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    }
    const int container = format.container == Container::Wav ? SF_FORMAT_WAV : SF_FORMAT_FLAC;
    switch (format.samples) {
    case SampleKind::Int16:
        return container | SF_FORMAT_PCM_16;
    case SampleKind::Int24:
        return container | SF_FORMAT_PCM_24;
    default:
        return container | SF_FORMAT_FLOAT;
    }
}

std::int64_t bytesPerSample(SampleKind kind) {
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

SoundFileWriter::SoundFileWriter(const std::filesystem::path& path, const SoundFileFormat& format)
    : format_((checkFormat(format), format)), file_(path) {
    SF_INFO info{};
    info.samplerate = format.sampleRate;
    info.channels = format.channels;
    info.format = libraryFormat(format);
    SF_VIRTUAL_IO operations = fileOperations();
    sound_ = sf_open_virtual(&operations, SFM_WRITE, &info, &file_);
    if (sound_ == nullptr) {
        file_.check();
        fail(sf_strerror(nullptr));
    }
    // It would carry the time of day.
    sf_command(sound_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
}

SoundFileWriter::~SoundFileWriter() {
    if (sound_ != nullptr) {
        sf_close(sound_);
    }
}

void SoundFileWriter::fail(const char* reason) const {
    throw InputError("cannot write " + file_.path().string() + ": " + reason);
}

void SoundFileWriter::require(std::int64_t frames) const {
    // A WAV file counts its bytes in 32 bits; a kilobyte is kept for its header.
    constexpr std::int64_t largestWav = (std::int64_t{1} << 32) - 1024;
    if (format_.container == Container::Wav &&
        frames > largestWav / (bytesPerSample(format_.samples) * format_.channels)) {
        fail("a WAV file ends at four gigabytes; a .flac file does not");
    }
}

void SoundFileWriter::write(std::span<const float> samples) {
    writtenFrames_ += static_cast<std::int64_t>(samples.size()) / format_.channels;
    require(writtenFrames_);
    writeSamples(samples);
    file_.check();
}

void SoundFileWriter::writeSamples(std::span<const float> samples) {
    const auto count = static_cast<sf_count_t>(samples.size());
    const int bits = wholeNumberBits(format_);
    sf_count_t written = 0;
    if (bits == 0) {
        written = sf_write_float(sound_, samples.data(), count);
    } else {
        numbers_.resize(samples.size());
        clippedSamples_ += quantise(samples, bits, numbers_);
        written = sf_write_int(sound_, numbers_.data(), count);
    }
    if (written != count) {
        file_.check();
        fail(sf_strerror(sound_));
    }
}

void SoundFileWriter::finish() {
    const int error = sf_close(sound_);
    sound_ = nullptr;
    file_.check();
    if (error != 0) {
        fail(sf_error_number(error));
    }
}

void SoundFileWriter::complete() {
    if (sound_ == nullptr) {
        return;
    }
    finish();
    if (format_.container == Container::Ogg) {
        settleOggSerial(file_);
    }
    file_.settle();
}

void SoundFileWriter::commit() {
    complete();
    file_.commit();
}

} // namespace zelvatone
