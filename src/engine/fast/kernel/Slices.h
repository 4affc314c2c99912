// Vectors put together from slices of four lanes, and taken apart into them.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Lanes.h"

namespace zelvatone {
namespace {

constexpr std::int32_t kSlices = kLanes / kSliceLanes; // in a vector

using SliceFloats __attribute__((vector_size(4 * kSliceLanes))) = float;
using SliceInts __attribute__((vector_size(4 * kSliceLanes))) = std::int32_t;

ZELVATONE_INLINE SliceFloats loadSlice(const float* from) {
    SliceFloats slice;
    __builtin_memcpy(&slice, from, sizeof slice);
    return slice;
}

// The vector whose slice s is sliceOf(s).
template<class SliceOf>
ZELVATONE_INLINE auto joinSlices(SliceOf sliceOf) {
#if ZELVATONE_LANES == 4
    return sliceOf(0);
#elif ZELVATONE_LANES == 8
    return __builtin_shufflevector(sliceOf(0), sliceOf(1), 0, 1, 2, 3, 4, 5, 6, 7);
#else
    const auto low = __builtin_shufflevector(sliceOf(0), sliceOf(1), 0, 1, 2, 3, 4, 5, 6, 7);
    const auto high = __builtin_shufflevector(sliceOf(2), sliceOf(3), 0, 1, 2, 3, 4, 5, 6, 7);
    return __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
#endif
}

ZELVATONE_INLINE void splitSlices(Floats v, SliceFloats (&slices)[kSlices]) {
#if ZELVATONE_LANES == 4
    slices[0] = v;
#else
    slices[0] = __builtin_shufflevector(v, v, 0, 1, 2, 3);
    slices[1] = __builtin_shufflevector(v, v, 4, 5, 6, 7);
#endif
#if ZELVATONE_LANES == 16
    slices[2] = __builtin_shufflevector(v, v, 8, 9, 10, 11);
    slices[3] = __builtin_shufflevector(v, v, 12, 13, 14, 15);
#endif
}

} // namespace
} // namespace zelvatone
