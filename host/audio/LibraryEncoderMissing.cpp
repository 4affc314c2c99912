#include "host/Error.h"
#include "host/audio/LibraryEncoder.h"

namespace zelvatone {

std::unique_ptr<SoundEncoder> makeLibraryEncoder(OutputFile& file,
                                                 const SoundFileFormat& /*format*/) {
    throw UsageError("cannot write " + file.path().string() +
                     ": on Windows sound files are .wav files");
}

} // namespace zelvatone
