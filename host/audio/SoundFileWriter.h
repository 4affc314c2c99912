// Writes a sound file that is either complete or not there. The same samples give the same bytes.
#pragma once

#include "host/audio/SoundEncoder.h"
#include "host/audio/SoundFileFormat.h"
#include "host/files/OutputFile.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace zelvatone {

class SoundFileWriter {
public:
    // Throws UsageError for a format that cannot be, InputError when the file cannot be written.
    SoundFileWriter(const std::filesystem::path& path, const SoundFileFormat& format);
    // Leaves no file unless commit() was called.
    ~SoundFileWriter();
    SoundFileWriter(const SoundFileWriter&) = delete;
    SoundFileWriter& operator=(const SoundFileWriter&) = delete;

    // Throws InputError when a file of that many frames is more than the container can hold.
    void require(std::int64_t frames) const;

    // Appends frames, channels interleaved, full scale 1.0. Throws InputError when the disk is
    // full or the container is.
    void write(std::span<const float> samples);
    // Completes the file, after which nothing can be written, but does not name it yet: for several
    // files that are to appear together. Throws InputError when that fails.
    void complete();
    // Completes the file and gives it its name. Throws InputError when that fails.
    void commit();

    const std::filesystem::path& path() const { return file_.path(); }
    // Samples so far that lay outside what the format can express.
    std::int64_t clippedSamples() const { return clippedSamples_; }

private:
    void writeSamples(std::span<const float> samples);
    [[noreturn]] void fail(const char* reason) const;

    SoundFileFormat format_;
    OutputFile file_;
    std::unique_ptr<SoundEncoder> encoder_; // null once the file is complete
    std::vector<std::int32_t> numbers_;
    std::int64_t writtenFrames_ = 0;
    std::int64_t clippedSamples_ = 0;
};

} // namespace zelvatone
