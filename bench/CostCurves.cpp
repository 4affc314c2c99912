#include "bench/CostCurves.h"

#include "bench/Comparison.h"
#include "bench/Measuring.h"

#include <algorithm>

using zelvatone::ZelvatoneEngine;

namespace bench {

namespace {

constexpr int kRepeats = 15;
// Mode-samples of one measurement, some 10 ms of the reference renderer; and the fewest blocks, so
// that the clock's own steps stay small beside it.
constexpr std::int32_t kModeSamples = 2'000'000;
constexpr std::int32_t kFewestBlocks = 20;
constexpr std::int32_t kMostBlocks = 1000;

// The cost of `notes` notes of `modes` modes each, for every renderer.
void measurePoint(std::int32_t notes, std::int32_t modes, std::vector<CostPoint>& points) {
    const std::int32_t blocks =
        std::clamp(kModeSamples / (notes * modes * kBlock), kFewestBlocks, kMostBlocks);
    std::vector<SteadyRun> runs;
    for (const zelvatone::Renderer renderer : renderersToCompare()) {
        runs.emplace_back(renderer, blocks,
                          [=](ZelvatoneEngine& engine) { holdNotes(engine, 36, notes, modes); });
    }
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        for (SteadyRun& run : runs) {
            run.measure();
        }
    }
    for (const SteadyRun& run : runs) {
        points.push_back({run.renderer, notes, modes, run.coreShare()});
    }
}

} // namespace

std::vector<CostPoint> measureCostCurves() {
    std::vector<CostPoint> points;
    for (const std::int32_t modes : {1, 2, 4, 8, 12, 16, 24, 32, 48, 64, 80, 100}) {
        measurePoint(ZelvatoneEngine::kVoiceCount, modes, points);
    }
    for (const std::int32_t notes : {1, 2, 4, 8, 12, 16, 20, 24, 28}) {
        measurePoint(notes, 100, points);
    }
    return points;
}

} // namespace bench
