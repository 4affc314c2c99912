// Reads back what the host wrote, with the library directly.
#pragma once

#include <filesystem>
#include <vector>

namespace zelvatone {

struct SoundFile {
    int format = 0; // the library's number
    int sampleRate = 0;
    int channels = 0;
    std::vector<float> samples; // channels interleaved

    std::vector<float> channel(int index) const;
};

SoundFile readSoundFile(const std::filesystem::path& path);

} // namespace zelvatone
