// Chooses among the sound systems that a machine has.
#pragma once

#include "live/AudioBackend.h"

#include <memory>
#include <string>

namespace zelvatone {

// Opens JACK where a server runs, else ALSA. Throws InputError, with what to do, when neither is
// there.
std::unique_ptr<AudioBackend> openBackend(const DeviceChoice& choice);

// Devices of the sound system that would be opened, as text for people.
std::string deviceList();

} // namespace zelvatone
