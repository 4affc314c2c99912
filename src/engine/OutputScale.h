// How the sum of all voices becomes the output.
#pragma once

namespace zelvatone {

// Up to three notes at full level share the output, a third each; beyond that the mix is scaled to
// keep the sum of all envelopes at one.
constexpr float kFullWeight = 3.0F;
constexpr float kGainBelowFullWeight = 0.33333334F;
// The float nearest 3.1622, about 10 dB: makes up for the voices' headroom.
constexpr double kOutputGain = 3.1621999740600586;

} // namespace zelvatone
