#include "host/audio/SoundEncoder.h"

#include "host/Error.h"
#include "host/audio/WavEncoder.h"

namespace zelvatone {

std::unique_ptr<SoundEncoder> makeSoundEncoder(OutputFile& file, const SoundFileFormat& format) {
    if (format.container != Container::Wav) {
        throw UsageError("cannot write " + file.path().string() +
                         ": on Windows sound files are .wav files");
    }
    return std::make_unique<WavEncoder>(file, format);
}

} // namespace zelvatone
