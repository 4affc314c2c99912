#include "bench/Measuring.h"

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
    : renderer(renderer), blocks_(blocks), engine_(std::make_unique<ZelvatoneEngine>(renderer)) {
    prepare(*engine_);
}

void SteadyRun::measure() {
    const double start = processorSeconds();
    hash = renderBlocks(*engine_, blocks_, hash);
    seconds.push_back(processorSeconds() - start);
}

double SteadyRun::coreShare() const {
    return quantile(seconds, 0.5) / (blocks_ * kBlock / double{kSampleRate});
}

WorstBlock::WorstBlock(Renderer renderer, const Load& load)
    : renderer(renderer), load_(load), times_(static_cast<std::size_t>(load.blocks)) {}

void WorstBlock::play() {
    ZelvatoneEngine engine(renderer);
    load_.prepare(engine);
    hash = kEmptyHash;
    for (std::int32_t number = 0; number < load_.blocks; ++number) {
        playBlock(engine, number);
    }
}

void WorstBlock::playBlock(ZelvatoneEngine& engine, std::int32_t number) {
    if (load_.act != nullptr) {
        load_.act(engine, number);
    }
    const auto start = std::chrono::steady_clock::now();
    hash = renderBlocks(engine, 1, hash);
    const auto end = std::chrono::steady_clock::now();
    times_[static_cast<std::size_t>(number)].push_back(
        std::chrono::duration<double>(end - start).count());
}

const std::vector<double>& WorstBlock::seconds() const {
    const auto shortest = [](const std::vector<double>& block) {
        return *std::min_element(block.begin(), block.end());
    };
    return *std::max_element(times_.begin(), times_.end(),
                             [&](const std::vector<double>& a, const std::vector<double>& b) {
                                 return shortest(a) < shortest(b);
                             });
}

} // namespace bench
