// FLAC files, the same on every processor.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zelvatone {

// The nearest numbers of 24 bits; what is beyond full scale, 1.0, is cut off. All samples finite.
std::vector<std::int32_t> flacNumbers(std::span<const float> samples);

// The bytes of a FLAC file of one channel and 24 bits. `numbers`: from -2^23 to 2^23 - 1;
// `sampleRate`: Hz, up to 655350.
//
// Fixed predictors alone, chosen and coded by whole numbers. The library that other sound files are
// written with takes five times as long, in equal parts for its prediction and for an MD5 sum of
// the samples, which a file may leave out; and its own predictors come from floating-point sums
// whose order depends on the processor.
std::vector<char> flacFile(std::span<const std::int32_t> numbers, int sampleRate);

} // namespace zelvatone
