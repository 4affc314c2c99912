// The phrase that tells whether two builds make the same sound.
#pragma once

#include "performance/MidiMessage.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

constexpr std::int32_t kPhraseRate = 48000; // Hz

// What is played, by rising frame at that rate.
std::vector<MidiMessage> phraseMessages();

// What factory program `program` makes of the phrase: one channel, untouched.
std::vector<float> renderPhrase(std::int32_t program);

} // namespace zelvatone
