#include "host/audio/SoundFileWriter.h"

#include "host/Error.h"
#include "host/audio/SampleFormat.h"
#include "host/text/Format.h"

#include <string>

namespace zelvatone {

SoundFileWriter::SoundFileWriter(const std::filesystem::path& path, const SoundFileFormat& format)
    : format_((checkFormat(format), format)),
      file_(path),
      encoder_(makeSoundEncoder(file_, format)) {}

SoundFileWriter::~SoundFileWriter() = default;

void SoundFileWriter::fail(const char* reason) const {
    throw InputError(formatText("cannot write {}: {}", file_.path().string(), reason));
}

void SoundFileWriter::require(std::int64_t frames) const {
    // A WAV file counts its bytes in 32 bits; a kilobyte is kept for its header.
    constexpr std::int64_t kLargestWav = (std::int64_t{1} << 32) - 1024;
    if (format_.container == Container::kWav &&
        frames > kLargestWav / (std::int64_t{bytesPerSample(format_.samples)} * format_.channels)) {
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
    const int bits = wholeNumberBits(format_);
    if (format_.container == Container::kOgg) {
        // Its decoders cut off what is beyond the whole numbers that they make.
        constexpr int kDecodedBits = 24;
        numbers_.resize(samples.size());
        clippedSamples_ += quantise(samples, kDecodedBits, numbers_);
    }
    if (bits == 0) {
        encoder_->write(samples);
        return;
    }
    numbers_.resize(samples.size());
    clippedSamples_ += quantise(samples, bits, numbers_);
    encoder_->write(std::span<const std::int32_t>(numbers_));
}

void SoundFileWriter::complete() {
    if (encoder_) {
        encoder_->finish();
        encoder_.reset();
        file_.settle();
    }
}

void SoundFileWriter::commit() {
    complete();
    file_.commit();
}

} // namespace zelvatone
