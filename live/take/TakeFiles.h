// The files that play a take again: its messages as a MIDI file, its parameters as automation.
#pragma once

#include "live/take/TakeClock.h"
#include "live/take/TakeRings.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

// A MIDI file with the messages among `events`, in their order, which lasts `frames`. Throws
// InputError for what a file cannot hold, which is over two gigabytes.
std::vector<std::uint8_t> takeMidi(std::span<const TakeEvent> events, std::int64_t frames,
                                   const TakeClock& clock);

// Lines of seconds, parameter, value with the moves among `events`. `names`: of the parameters.
// Above them, as a comment, `command`, which makes the sound again. Rate in Hz.
std::string takeAutomation(std::span<const TakeEvent> events, const std::vector<std::string>& names,
                           int rate, const std::string& command);

} // namespace zelvatone
