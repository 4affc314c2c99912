// FLAC and OGG files, by libsndfile where the platform has it.
#pragma once

#include "host/audio/SoundEncoder.h"

#include <memory>

namespace zelvatone {

// `file` is new and outlives the encoder. Throws UsageError on a platform without the library.
std::unique_ptr<SoundEncoder> makeLibraryEncoder(ByteTarget& file, const SoundFileFormat& format);

} // namespace zelvatone
