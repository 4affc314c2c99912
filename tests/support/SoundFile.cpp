#include "tests/support/SoundFile.h"

#include <sndfile.hh>

#include <stdexcept>

namespace zelvatone {

std::vector<float> SoundFile::channel(int index) const {
    std::vector<float> picked;
    for (auto i = static_cast<std::size_t>(index); i < samples.size();
         i += static_cast<std::size_t>(channels)) {
        picked.push_back(samples[i]);
    }
    return picked;
}

SoundFile readSoundFile(const std::filesystem::path& path) {
    SndfileHandle handle(path.string());
    if (!handle) {
        throw std::runtime_error("no sound file: " + path.string());
    }
    SoundFile sound{handle.format(), handle.samplerate(), handle.channels(), {}};
    sound.samples.resize(static_cast<std::size_t>(handle.frames() * handle.channels()));
    handle.readf(sound.samples.data(), handle.frames());
    return sound;
}

} // namespace zelvatone
