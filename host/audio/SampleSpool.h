// Samples that wait on the disk until it is known how loud they are to be.
#pragma once

#include "host/files/OutputFile.h"

#include <filesystem>
#include <span>

namespace zelvatone {

// Lies beside the file that the samples are for, without a name or hidden, and goes with the object
// or the process.
class SampleSpool {
public:
    // Throws InputError when no file can be written there.
    explicit SampleSpool(const std::filesystem::path& beside);

    // Appends. Throws InputError when the disk is full.
    void write(std::span<const float> samples);
    // Goes back to the first sample, to read; nothing is written afterwards.
    void rewind();
    // The next samples, into `target`. Returns those that there are: fewer at the end alone. Throws
    // InputError when they cannot be read.
    std::span<float> read(std::span<float> target);

private:
    OutputFile file_;
    std::int64_t unread_ = 0; // samples
};

} // namespace zelvatone
