// What counts as the end of a sound.
#pragma once

namespace zelvatone {

// A sound has ended when it has been below this level for this long: a rest within it is shorter.
inline constexpr float kSilentLevel = 1e-5F; // -100 dB, below the last bit of a 16-bit file
inline constexpr double kSilenceSeconds = 0.5;

} // namespace zelvatone
