#include "host/Error.h"
#include "host/audio/LibraryEncoder.h"
#include "host/text/Format.h"

namespace zelvatone {

std::unique_ptr<SoundEncoder> makeLibraryEncoder(ByteTarget& file,
                                                 const SoundFileFormat& /*format*/) {
    throw UsageError(
        formatText("cannot write {}: on Windows sound files are .wav files", file.name()));
}

} // namespace zelvatone
