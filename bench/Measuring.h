// Timing one renderer at one load.
#pragma once

#include "bench/Loads.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace bench {

// The value below which `share` (0 to 1) of `values` lie.
double quantile(std::vector<double> values, double share);

// Seconds that this thread has spent on a processor.
double processorSeconds();

// An engine at a load that does not end, measured again and again.
class SteadyRun {
public:
    // Measures `blocks` blocks at a time; `prepare` brings the new engine to where they begin.
    SteadyRun(zelvatone::Renderer renderer, std::int32_t blocks,
              const std::function<void(zelvatone::ZelvatoneEngine&)>& prepare);

    // Renders the next blocks and notes the processor time that this thread took.
    void measure();
    // The median share of a core that it takes to keep up with the sound.
    double coreShare() const;

    zelvatone::Renderer renderer;
    std::vector<double> seconds;     // one a measurement
    std::uint64_t hash = kEmptyHash; // of all samples so far

private:
    std::int32_t blocks_;
    std::unique_ptr<zelvatone::ZelvatoneEngine> engine_;
};

// A load that has a most expensive block, played from its beginning again and again. Wall-clock
// time: the audio device waits by the clock.
class WorstBlock {
public:
    WorstBlock(zelvatone::Renderer renderer, const Load& load);

    // Plays the load once more, on a new engine.
    void play();
    // The times that its most expensive block took. The block is chosen by its shortest time,
    // because disturbances only make a block longer.
    const std::vector<double>& seconds() const;

    zelvatone::Renderer renderer;
    std::uint64_t hash = kEmptyHash; // of the samples of all blocks

private:
    void playBlock(zelvatone::ZelvatoneEngine& engine, std::int32_t number);

    const Load& load_;
    std::vector<std::vector<double>> times_; // by block, one for each time it was played
};

} // namespace bench
