#include "Measuring.h"

#include <algorithm>
#include <chrono>
#include <ctime>

using zelvatone::Renderer;
using zelvatone::ZelvatoneEngine;

namespace bench {

double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const double position = share * static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(position + 0.5)];
}

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

SteadyRun::SteadyRun(Renderer renderer, std::int32_t blocks,
                     const std::function<void(ZelvatoneEngine&)>& prepare)
    : renderer(renderer), blocks(blocks), engine(std::make_unique<ZelvatoneEngine>(renderer)) {
    prepare(*engine);
}

void SteadyRun::measure() {
    const double start = processorSeconds();
    hash = renderBlocks(*engine, blocks, hash);
    seconds.push_back(processorSeconds() - start);
}

double SteadyRun::coreShare() const {
    return quantile(seconds, 0.5) / (blocks * kBlock / double{kSampleRate});
}

WorstBlock::WorstBlock(Renderer renderer, const Load& load)
    : renderer(renderer), load(load), times(static_cast<std::size_t>(load.blocks)) {}

void WorstBlock::play() {
    ZelvatoneEngine engine(renderer);
    load.prepare(engine);
    hash = kEmptyHash;
    for (std::int32_t number = 0; number < load.blocks; ++number) {
        playBlock(engine, number);
    }
}

void WorstBlock::playBlock(ZelvatoneEngine& engine, std::int32_t number) {
    if (load.act != nullptr) {
        load.act(engine, number);
    }
    const auto start = std::chrono::steady_clock::now();
    hash = renderBlocks(engine, 1, hash);
    const auto end = std::chrono::steady_clock::now();
    times[static_cast<std::size_t>(number)].push_back(
        std::chrono::duration<double>(end - start).count());
}

const std::vector<double>& WorstBlock::seconds() const {
    const auto shortest = [](const std::vector<double>& block) {
        return *std::min_element(block.begin(), block.end());
    };
    return *std::max_element(times.begin(), times.end(),
                             [&](const std::vector<double>& a, const std::vector<double>& b) {
                                 return shortest(a) < shortest(b);
                             });
}

} // namespace bench
