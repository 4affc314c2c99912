#include "host/audio/SoundEncoder.h"

#include "host/audio/LibraryEncoder.h"
#include "host/audio/WavEncoder.h"

namespace zelvatone {

std::unique_ptr<SoundEncoder> makeSoundEncoder(ByteTarget& file, const SoundFileFormat& format) {
    if (format.container == Container::kWav) {
        return std::make_unique<WavEncoder>(file, format);
    }
    return makeLibraryEncoder(file, format);
}

} // namespace zelvatone
