// Vectors of kLanes floats, and the few operations on them that the language has no sign for.
// This folder's headers are compiled once for each width and must leave nothing behind that the
// linker could share between the widths: everything is local, and nothing of the library is used.
#pragma once

#include <cstdint>

#ifndef ZELVATONE_LANES
#error "ZELVATONE_LANES is 4, 8 or 16"
#endif

namespace zelvatone {
namespace {

constexpr std::int32_t kLanes = ZELVATONE_LANES;

using Floats __attribute__((vector_size(4 * kLanes))) = float;
using Ints __attribute__((vector_size(4 * kLanes))) = std::int32_t;
using Words __attribute__((vector_size(4 * kLanes))) = std::uint32_t;
using Bytes __attribute__((vector_size(4 * kLanes))) = signed char;

#define ZELVATONE_INLINE [[gnu::always_inline]] inline
#define ZELVATONE_INLINE_LAMBDA __attribute__((always_inline))

ZELVATONE_INLINE Floats load(const float* from) {
    Floats v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

ZELVATONE_INLINE void store(float* to, Floats v) {
    __builtin_memcpy(to, &v, sizeof v);
}

ZELVATONE_INLINE void store(std::int32_t* to, Ints v) {
    __builtin_memcpy(to, &v, sizeof v);
}

ZELVATONE_INLINE Floats fill(float x) {
    return x - Floats{}; // not `+`, which would make +0 of -0
}

ZELVATONE_INLINE Ints bits(Floats v) {
    return reinterpret_cast<Ints>(v);
}

ZELVATONE_INLINE Floats fromBits(Ints v) {
    return reinterpret_cast<Floats>(v);
}

// The lanes of `v` where `mask` has all bits set, zero elsewhere.
ZELVATONE_INLINE Floats keep(Ints mask, Floats v) {
    return fromBits(mask & bits(v));
}

ZELVATONE_INLINE Floats select(Ints mask, Floats yes, Floats no) {
    return mask ? yes : no;
}

ZELVATONE_INLINE Ints truncate(Floats v) {
    return __builtin_convertvector(v, Ints);
}

// The same for values below 2^22 either way. WebAssembly's conversion also minds values that fit no
// integer, which takes a browser more than twice the instructions.
ZELVATONE_INLINE Ints truncateSmall(Floats v) {
#ifdef __wasm_simd128__
    constexpr float kMiddle = 12582912.0F; // 1.5 * 2^23, where floats are the whole numbers
    return bits(__builtin_wasm_trunc_f32x4(v) + kMiddle) - bits(fill(kMiddle));
#else
    return truncate(v);
#endif
}

ZELVATONE_INLINE Floats toFloats(Ints v) {
    return __builtin_convertvector(v, Floats);
}

ZELVATONE_INLINE Floats absolute(Floats v) {
    return fromBits(bits(v) & 0x7FFFFFFF);
}

ZELVATONE_INLINE Ints laneNumbers() {
#ifdef __wasm_simd128__
    return Ints{0, 1, 2, 3}; // clang 14 would do at run time what the loop says
#else
    Ints v;
    for (std::int32_t i = 0; i < kLanes; ++i) {
        v[i] = i;
    }
    return v;
#endif
}

// Of lanes first..first+kLanes-1, those below `count`.
ZELVATONE_INLINE Ints lanesBelow(std::int32_t count, std::int32_t first) {
    return laneNumbers() < (count - first);
}

// The bits that any lane has set.
ZELVATONE_INLINE std::int32_t anyLane(Ints v) {
    std::int64_t pairs[kLanes / 2]; // of lanes, each in a word
    __builtin_memcpy(pairs, &v, sizeof v);
    std::int64_t all = 0;
    for (const std::int64_t pair : pairs) {
        all |= pair;
    }
    return static_cast<std::int32_t>(all | all >> 32);
}

// Whether any lane of a mask is set. Its lanes have all bits set or none.
ZELVATONE_INLINE bool anySet(Ints mask) {
#if ZELVATONE_LANES == 4 && defined(__SSE2__)
    return __builtin_ia32_movmskps(fromBits(mask)) != 0;
#elif ZELVATONE_LANES == 8 && defined(__AVX2__)
    return __builtin_ia32_movmskps256(fromBits(mask)) != 0;
#elif defined(__wasm_simd128__)
    return __builtin_wasm_any_true_v128(reinterpret_cast<Bytes>(mask));
#else
    return anyLane(mask) != 0;
#endif
}

// Calls `work` with 0 to kCount - 1. These are constants to the compiler, so that what they index
// can stay in registers.
template<std::int32_t kCount, class Work>
ZELVATONE_INLINE void repeat(Work work) {
    if constexpr (kCount > 1) {
        repeat<kCount - 1>(work);
    }
    work(kCount - 1);
}

// Whether words without a sign can be compared, which SSE2 cannot.
#if ZELVATONE_LANES == 4 && !defined(__wasm_simd128__)
constexpr bool kComparesWords = false;
#else
constexpr bool kComparesWords = true;
#endif

} // namespace
} // namespace zelvatone
