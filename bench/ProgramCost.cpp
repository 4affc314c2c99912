#include "bench/ProgramCost.h"

#include "bench/Measuring.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;
using zelvatone::Renderer;
using zelvatone::ZelvatoneEngine;

constexpr auto kBlocksASecond = static_cast<std::int32_t>(kSampleRate) / kBlock;
constexpr std::int32_t kLowestNote = 36; // C2
constexpr int kPlays = 3;

// One play of a chord, from its note-ons on.
class ChordPlay {
public:
    ChordPlay(const HeldChord& chord, Renderer renderer) : engine_(renderer) {
        engine_.setSampleRate(kSampleRate);
        engine_.setProgram(chord.program);
        renderBlocks(engine_, 1, kEmptyHash); // notes read the settings of the last block
        for (std::int32_t i = 0; i < chord.notes; ++i) {
            engine_.noteOn(kLowestNote + i, 100);
        }
    }

    // Returns the processor time that the next second of sound took.
    double playSecond() {
        const double start = processorSeconds();
        for (std::int32_t i = 0; i < kBlocksASecond; ++i) {
            const auto blockStart = Clock::now();
            hash_ = renderBlocks(engine_, 1, hash_);
            blocks_.push_back(std::chrono::duration<double>(Clock::now() - blockStart).count());
        }
        return processorSeconds() - start;
    }

    double playSeconds(std::int32_t count) {
        double seconds = 0.0;
        for (std::int32_t i = 0; i < count; ++i) {
            seconds += playSecond();
        }
        return seconds;
    }

    std::uint64_t hash() const { return hash_; }
    const std::vector<double>& blocks() const { return blocks_; } // seconds, by the clock

private:
    ZelvatoneEngine engine_;
    std::uint64_t hash_ = kEmptyHash;
    std::vector<double> blocks_;
};

// Keeps the shorter time of each block.
void keepShorter(std::vector<double>& kept, const std::vector<double>& other) {
    std::transform(kept.begin(), kept.end(), other.begin(), kept.begin(),
                   [](double a, double b) { return std::min(a, b); });
}

} // namespace

ProgramCost measureProgram(const HeldChord& chord, Renderer renderer) {
    ProgramCost cost{};
    ChordPlay reference(chord, Renderer::kReference);
    ChordPlay play(chord, renderer);
    double referenceSeconds = 0.0;
    double compared = 0.0;
    for (std::int32_t i = 0; i < chord.secondsCompared; ++i) {
        referenceSeconds += reference.playSecond();
        compared += play.playSecond();
    }
    cost.ratio = referenceSeconds / compared;
    cost.hash = play.hash();
    cost.sameSound = play.hash() == reference.hash();
    const double rest = play.playSeconds(chord.seconds - chord.secondsCompared);
    cost.coreShare = (compared + rest) / chord.seconds;

    std::vector<double> blocks = play.blocks();
    for (int i = 1; i < kPlays; ++i) {
        ChordPlay again(chord, renderer);
        cost.coreShare = std::min(cost.coreShare, again.playSeconds(chord.seconds) / chord.seconds);
        keepShorter(blocks, again.blocks());
    }
    cost.worstBlock = *std::max_element(blocks.begin(), blocks.end());
    return cost;
}

} // namespace bench
