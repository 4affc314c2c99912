// Tells programs apart that make other sounds, or other files of the same sounds.
#pragma once

#include <string>

namespace zelvatone {

struct Fingerprint {
    std::string sound;   // of the samples of a short note with every program
    std::string encoder; // of the sound files made of some of them
};

// Renders for some hundredths of a second. Throws InputError without memory.
Fingerprint fingerprintOf(bool isFlac);

} // namespace zelvatone
