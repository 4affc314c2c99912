// Vectors of modes turned into quads: four samples of one mode side by side, which is how stage 2
// reads them.
#pragma once

#include "engine/fast/ModeKernel.h"
#include "engine/fast/kernel/Lanes.h"

namespace zelvatone {
namespace {

// Every 128 bits by themselves: the lower two elements of `a` and `b` alternating; the upper two.
template<class Vector>
ZELVATONE_INLINE Vector interleaveLow(Vector a, Vector b) {
#if ZELVATONE_LANES == 4
    return __builtin_shufflevector(a, b, 0, 4, 1, 5);
#elif ZELVATONE_LANES == 8
    return __builtin_shufflevector(a, b, 0, 8, 1, 9, 4, 12, 5, 13);
#else
    return __builtin_shufflevector(a, b, 0, 16, 1, 17, 4, 20, 5, 21, 8, 24, 9, 25, 12, 28, 13, 29);
#endif
}

template<class Vector>
ZELVATONE_INLINE Vector interleaveHigh(Vector a, Vector b) {
#if ZELVATONE_LANES == 4
    return __builtin_shufflevector(a, b, 2, 6, 3, 7);
#elif ZELVATONE_LANES == 8
    return __builtin_shufflevector(a, b, 2, 10, 3, 11, 6, 14, 7, 15);
#else
    return __builtin_shufflevector(a, b, 2, 18, 3, 19, 6, 22, 7, 23, 10, 26, 11, 27, 14, 30, 15,
                                   31);
#endif
}

// Stores `rows`, one vector of modes a sample, as quads. Only rows of four modes each are turned,
// which costs least: lane 4 b + j lies at j * kLanes + 4 b.
template<class Vector, class Element>
ZELVATONE_INLINE void storeQuads(Element* to, const Vector (&rows)[kQuad]) {
    const Vector low02 = interleaveLow(rows[0], rows[2]);
    const Vector low13 = interleaveLow(rows[1], rows[3]);
    const Vector high02 = interleaveHigh(rows[0], rows[2]);
    const Vector high13 = interleaveHigh(rows[1], rows[3]);
    store(to, interleaveLow(low02, low13));
    store(to + kLanes, interleaveHigh(low02, low13));
    store(to + 2 * kLanes, interleaveLow(high02, high13));
    store(to + 3 * kLanes, interleaveHigh(high02, high13));
}

// Where the quad of `lane` lies.
ZELVATONE_INLINE std::int32_t quadOf(std::int32_t lane) {
    return lane % 4 * kLanes + lane / 4 * 4;
}

} // namespace
} // namespace zelvatone
