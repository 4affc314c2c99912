// The vector half of the fast renderer, as the scalar half sees it: a table of functions, compiled
// once for each vector width from one source. Every function keeps the reference renderer to the
// bit.
#pragma once

#include "engine/ModeCount.h"

#include <cstdint>

namespace zelvatone {

// The longest stretch of samples that is rendered at once.
constexpr std::int32_t kRunSamples = 64;
// How much of it stage 1 prepares before stage 2 sums it: the table indices of a full bank then
// take 14 KB and stay in the first-level cache.
constexpr std::int32_t kChunkSamples = 32;
// Kernels sum this many samples at once, whatever their width, and write whole quads.
constexpr std::int32_t kQuad = 4;
// Floats in the widest vector of any kernel, that of AVX-512.
constexpr std::int32_t kWidestLanes = 16;
// A full bank in whole vectors of any width: the arrays of a bank may be read and written up to
// here.
constexpr std::int32_t kPaddedModes =
    (kMaxModeCount + kWidestLanes - 1) / kWidestLanes * kWidestLanes;
// Lanes are given to voices in slices of so many, one below the other in order of their modes.
constexpr std::int32_t kSliceLanes = 4;
// Lanes that the voices of one batch may fill: those of one full bank. More would leave the
// first-level cache.
constexpr std::int32_t kBatchLanes = kPaddedModes;

// A voice's seven arrays and how many of its modes are active, 0 to 100. Modes after
// the active ones keep their values.
struct ModeBank {
    float* amp;
    float* freq;
    float* phase;
    float* ampStep;
    float* freqStep;
    float* targetAmp;
    float* targetFreq;
    std::uint32_t* reportedModes; // bits: whose failed look-up has been reported in this note
    std::int32_t count;
};

// How far the phase of 1 Hz advances in each sample of a run: the pitch bend makes it.
struct PhaseAdvance {
    float radiansPerHz[kRunSamples];
    float most;  // the largest of them
    bool varies; // whether they differ
};

// What holds for all modes of all voices in a run.
struct BlockConstants {
    const PhaseAdvance* phaseAdvance;
    float entriesPerRadian;   // table entries
    const float* cycle;       // the wave table's entry 0, with entries on both sides of it
    float indexLimit;         // below it, either way, are the entries in use; 0: there are none
    std::int32_t silentEntry; // where `cycle` holds a 0 for look-ups that fail
    const float* dropFactors; // by mode: its frequency's factor a sample, 1 for those left alone
    bool drops;               // whether any factor is not 1
    bool dropsGliding;        // whether modes drop while they glide
    float dropGrowth;         // the most that kRunSamples samples of drop can raise a frequency
    float dropChange;         // the most that they can add or take away, as a part of it
};

// How the frequencies of a bank move.
enum class FrequencyMotion : std::int32_t {
    kStill,       // not at all
    kUnderway,    // by steps and drop factors, and none can reach its target
    kGlide,       // by steps alone
    kGlideAndDrop // by both, or not known beforehand
};

// Which of the wrapping rules its phases can meet.
enum class Wrap : std::int32_t {
    kNear,   // turning forwards by less than one turn a sample
    kFar,    // turning forwards by constant amounts
    kEither, // turning either way by less than one turn a sample, from phases that are not negative
    kAny,    // turning either way by some thousand turns at most
    kExact   // anything, infinities and NaN included: look-ups may fail
};

// What a bank does in its next samples.
struct BankTraits {
    bool inFastRange; // all values are in the input range
    bool loudnessMoves;
    FrequencyMotion motion;
    Wrap wrap;
};

// One voice of a batch.
struct Segment {
    ModeBank modes;
    float gain;
    float* out;          // receives the voice's samples, rounded up to whole quads
    std::int32_t slot;   // of the voice
    std::int32_t sample; // of the run, at which the segment begins
};
// The most segments of a batch: every slot's.
constexpr std::int32_t kBatchSegments = 32;

// The look-ups that failed in a run and have not been reported yet, in any order.
struct FailedLookup {
    std::int32_t sample, slot, mode;
    float phase;
};
struct FailedLookups {
    // Every mode of every slot once. Those that find no room are reported in the next run.
    static constexpr std::int32_t kCapacity = kBatchSegments * kMaxModeCount;
    std::int32_t count = 0;
    FailedLookup list[kCapacity];
};

// What stage 1 leaves for stage 2, one vector of modes after the other. Stage 1 works on groups of
// vectors and fills the last group up with idle ones.
struct alignas(64) KernelScratch {
    static constexpr std::int32_t kMostIdleVectors = 6; // all of the widest group but one
    static constexpr std::int32_t kLanes = kBatchLanes + kMostIdleVectors * kWidestLanes;
    std::int32_t index[kLanes * kChunkSamples] = {};
    float amp[kLanes * kChunkSamples] = {};
    float idle[kWidestLanes] = {}; // every array of an idle vector
    std::uint32_t idleFlags[1] = {};
    FailedLookups failures;
};

struct ModeKernel {
    const char* name;
    std::int32_t lanes; // floats in a vector

    // Analyses the next `samples` samples (1..kRunSamples), during which no target changes.
    BankTraits (*analyse)(const ModeBank& bank, const BlockConstants& constants,
                          std::int32_t samples);
    // Whether amplitudes, their targets and steps are in the input range, used or left over.
    bool (*amplitudesAreInRange)(const ModeBank& bank);
    // Renders `samples` of each of `count` segments, all with the same traits and in the fast
    // range, which begin at the same sample, and moves their banks on. Together their banks fill
    // kBatchLanes at most, in whole slices.
    void (*render)(const Segment* segments, std::int32_t count, std::int32_t samples,
                   const BankTraits& traits, const BlockConstants& constants,
                   KernelScratch& scratch);

    // The steps of a single sample, for those at which modes come and go in between.
    // The first returns the sum of the modes.
    float (*sum)(const Segment& segment, const BlockConstants& constants, KernelScratch& scratch);
    void (*glide)(const ModeBank& bank);
    void (*advance)(const Segment& segment, const BlockConstants& constants);

    // Adds a voice under its envelope to the mix.
    void (*mix)(float* sum, float* weight, const float* voice, const float* level,
                std::int32_t samples);
    // Scales the mix to the output. Writes whole quads.
    void (*finish)(float* out, const float* sum, const float* weight, std::int32_t samples);
};

// For every x86-64 processor, for those with AVX2, and for those with AVX-512F.
extern const ModeKernel kSse2Kernel;
extern const ModeKernel kAvx2Kernel;
extern const ModeKernel kAvx512Kernel;

} // namespace zelvatone
