#include "host/audio/LibraryEncoder.h"

#include "host/Error.h"
#include "host/audio/OggSerial.h"
#include "host/text/Format.h"

#include <sndfile.h>

#include <string>
#include <utility>

namespace zelvatone {

namespace {

ByteTarget& fileOf(void* user) {
    return *static_cast<ByteTarget*>(user);
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
    if (format.container == Container::kOgg) {
        return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    }
    return SF_FORMAT_FLAC |
           (format.samples == SampleKind::kInt16 ? SF_FORMAT_PCM_16 : SF_FORMAT_PCM_24);
}

class LibraryEncoder final : public SoundEncoder {
public:
    LibraryEncoder(ByteTarget& file, const SoundFileFormat& format);
    ~LibraryEncoder() override;

    void write(std::span<const float> samples) override;
    void write(std::span<const std::int32_t> numbers) override;
    void finish() override;

private:
    void expect(sf_count_t written, std::size_t wanted) const;
    [[noreturn]] void fail(const char* reason) const;

    ByteTarget& file_;
    Container container_;
    SNDFILE* sound_;
};

LibraryEncoder::LibraryEncoder(ByteTarget& file, const SoundFileFormat& format)
    : file_(file), container_(format.container) {
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
    if (format.isPortable) {
        double level = 0.0; // fixed predictors alone, whose sums are of whole numbers
        sf_command(sound_, SFC_SET_COMPRESSION_LEVEL, &level, sizeof level);
    }
}

LibraryEncoder::~LibraryEncoder() {
    if (sound_ != nullptr) {
        sf_close(sound_);
    }
}

void LibraryEncoder::fail(const char* reason) const {
    throw InputError(formatText("cannot write {}: {}", file_.name(), reason));
}

void LibraryEncoder::expect(sf_count_t written, std::size_t wanted) const {
    if (written != static_cast<sf_count_t>(wanted)) {
        file_.check();
        fail(sf_strerror(sound_));
    }
}

void LibraryEncoder::write(std::span<const float> samples) {
    const auto count = static_cast<sf_count_t>(samples.size());
    expect(sf_write_float(sound_, samples.data(), count), samples.size());
}

void LibraryEncoder::write(std::span<const std::int32_t> numbers) {
    const auto count = static_cast<sf_count_t>(numbers.size());
    expect(sf_write_int(sound_, numbers.data(), count), numbers.size());
}

void LibraryEncoder::finish() {
    const int error = sf_close(std::exchange(sound_, nullptr));
    file_.check();
    if (error != 0) {
        fail(sf_error_number(error));
    }
    // The same command gives the same file, as the manual promises.
    if (container_ == Container::kOgg) {
        settleOggSerial(file_);
    }
}

} // namespace

std::unique_ptr<SoundEncoder> makeLibraryEncoder(ByteTarget& file, const SoundFileFormat& format) {
    return std::make_unique<LibraryEncoder>(file, format);
}

} // namespace zelvatone
