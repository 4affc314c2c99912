// What the engine plays in the benchmarks. Every load is the same on every run and machine, so the
// sound it makes can be compared by a hash.
#pragma once

#include "engine/ZelvatoneEngine.h"

#include <cstdint>
#include <span>

namespace bench {

constexpr float kSampleRate = 48000.0F;
constexpr std::int32_t kBlock = 64; // a common block in live play: 1.33 ms

// The hash of no samples, by FNV-1a.
constexpr std::uint64_t kEmptyHash = 0xCBF29CE484222325U;

struct Load {
    const char* name;
    const char* what;
    // Blocks measured at a time: enough for the reference renderer to take some 30 ms.
    std::int32_t blocks;
    // Brings a new engine to where the measurement starts.
    void (*prepare)(zelvatone::ZelvatoneEngine& engine);
    // Is called before block `number`, counted from the first that is measured; null: nothing
    // happens.
    void (*act)(zelvatone::ZelvatoneEngine& engine, std::int32_t number);
};

// Loads that do not end: their cost is an average.
std::span<const Load> steadyLoads();

// Loads of a moment: their cost is that of the most expensive of `blocks` blocks.
std::span<const Load> worstBlockLoads();

// Holds `notes` notes of `modes` modes each, from MIDI note `lowest` up, in sustain.
void holdNotes(zelvatone::ZelvatoneEngine& engine, std::int32_t lowest, std::int32_t notes,
               std::int32_t modes);

// Renders `count` blocks; returns a hash of their samples, continuing `hash`.
std::uint64_t renderBlocks(zelvatone::ZelvatoneEngine& engine, std::int32_t count,
                           std::uint64_t hash);

} // namespace bench
