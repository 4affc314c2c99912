// The largest level of a sound between its samples too.
#pragma once

#include <span>

namespace zelvatone {

// Over all channels, as ITU-R BS.1770 estimates it; 1.0 is full scale. `samples`: channels
// interleaved, 1 or 2 of them, full scale 1.0, all finite; `sampleRate`: Hz, 8000 to 192000. Throws
// InputError without memory.
double truePeakOf(std::span<const float> samples, int channels, int sampleRate);

} // namespace zelvatone
