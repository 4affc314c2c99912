// Chooses among the sound systems that a machine has.
#pragma once

#include "live/AudioBackend.h"

#include <memory>
#include <string>

namespace zelvatone {

// Opens JACK where a server runs. Throws InputError, with what to do, when there is none.
std::unique_ptr<AudioBackend> openBackend(const DeviceChoice& choice);

// Devices of every sound system, as text for people.
std::string deviceList();

} // namespace zelvatone
