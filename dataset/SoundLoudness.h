// How loud several sounds are, measured side by side.
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace zelvatone {

// Sounds that are measured in the time of one: the filters wait for their own last samples, and the
// processor computes this many at once.
constexpr std::size_t kLoudnessLanes = 4;

// Integrated loudness of each as EBU R 128 and ITU-R BS.1770 define it, as LoudnessMeter's, and
// independent of the others: LUFS, -infinity for silence and for less than 0.4 seconds. `sounds`:
// one channel each, all of one length, full scale 1.0, all samples finite; the same one may stand
// several times. `sampleRate`: Hz.
std::array<double, kLoudnessLanes>
soundLoudness(const std::array<std::span<const float>, kLoudnessLanes>& sounds, int sampleRate);

} // namespace zelvatone
