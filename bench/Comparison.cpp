#include "bench/Comparison.h"

#include "bench/Measuring.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

using zelvatone::Renderer;

namespace bench {

namespace {

// Odd, so that the median is one of the measurements.
constexpr int kRepeats = 21;

// Plays all runs in turn, `repeats` times.
template<class Run>
void takeTurns(std::vector<Run>& runs, int repeats, void (Run::*play)()) {
    for (int repeat = 0; repeat < repeats; ++repeat) {
        for (Run& run : runs) {
            (run.*play)();
        }
    }
}

// `reference` and `other`: seconds, measured in turn.
std::vector<double> ratios(const std::vector<double>& reference, const std::vector<double>& other) {
    std::vector<double> result(reference.size());
    std::transform(reference.begin(), reference.end(), other.begin(), result.begin(),
                   std::divides<>());
    return result;
}

Row makeRow(const Load& load, Renderer renderer, const std::vector<double>& ratios) {
    Row row{};
    row.load = load.name;
    row.renderer = renderer;
    row.ratio = quantile(ratios, 0.5);
    row.lowerQuartile = quantile(ratios, 0.25);
    row.upperQuartile = quantile(ratios, 0.75);
    return row;
}

} // namespace

std::vector<Renderer> renderersToCompare() {
    const char* wanted = std::getenv("ZELVATONE_KERNEL"); // NOLINT(concurrency-mt-unsafe)
    std::vector<Renderer> list;
    for (const Renderer renderer : zelvatone::kAllRenderers) {
        const bool isWanted = wanted == nullptr || renderer == Renderer::kReference ||
                              std::string_view(wanted) == nameOf(renderer);
        if (isWanted && isSupported(renderer)) {
            list.push_back(renderer);
        }
    }
    return list;
}

std::vector<Row> compareSteady(const Load& load) {
    std::vector<SteadyRun> runs;
    for (const Renderer renderer : renderersToCompare()) {
        runs.emplace_back(renderer, load.blocks, load.prepare);
    }
    takeTurns(runs, kRepeats, &SteadyRun::measure);
    std::vector<Row> rows;
    for (const SteadyRun& run : runs) {
        Row row = makeRow(load, run.renderer, ratios(runs.front().seconds, run.seconds));
        row.kind = "steady";
        row.cost = run.coreShare();
        row.hash = run.hash;
        row.sameSound = run.hash == runs.front().hash;
        rows.push_back(row);
    }
    return rows;
}

std::vector<Row> compareWorstBlocks(const Load& load) {
    std::vector<WorstBlock> runs;
    for (const Renderer renderer : renderersToCompare()) {
        runs.emplace_back(renderer, load);
    }
    takeTurns(runs, kRepeats, &WorstBlock::play);
    std::vector<Row> rows;
    for (const WorstBlock& run : runs) {
        Row row = makeRow(load, run.renderer, ratios(runs.front().seconds(), run.seconds()));
        row.kind = "worst";
        row.cost = quantile(run.seconds(), 0.5);
        row.hash = run.hash;
        row.sameSound = run.hash == runs.front().hash;
        rows.push_back(row);
    }
    return rows;
}

} // namespace bench
