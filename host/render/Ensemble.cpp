#include "host/render/Ensemble.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

// Frames in a round at least: threads meet after each, which must cost little beside the work.
// Ctrl+C is looked for as often: a tenth of a second of sound.
constexpr int kRoundFrames = 4096;

int blocksInRound(int blockSize) {
    return (kRoundFrames + blockSize - 1) / blockSize;
}

} // namespace

Ensemble::Ensemble(std::vector<Part> parts, int threads, const FinishPlan& finish)
    : parts_(std::move(parts)),
      // A thread without a part would only wait.
      team_(std::min(threads, static_cast<int>(parts_.size()))) {
    const StreamFormat& format = parts_.at(0).plugin->format();
    const int played = parts_[0].player->channels();
    finishes_.assign(parts_.size(), Finish(finish, played, format.sampleRate));
    const auto frames = static_cast<std::size_t>(format.blockSize);
    const auto blocks = static_cast<std::size_t>(blocksInRound(format.blockSize));
    blockSamples_ = frames * static_cast<std::size_t>(played);
    mix_.resize(frames * blocks * static_cast<std::size_t>(channels()));
    samples_.assign(parts_.size(), std::vector<float>(blockSamples_ * blocks));
}

void Ensemble::renderPart(std::size_t part) {
    std::span<float> rest = samples_[part];
    std::fill(rest.begin(), rest.end(), 0.0F);
    while (!rest.empty()) {
        parts_[part].player->renderBlock();
        parts_[part].player->addTo(rest.first(blockSamples_), parts_[part].gain);
        rest = rest.subspan(blockSamples_);
    }
    finishes_[part].apply(samples_[part]);
}

std::span<float> Ensemble::renderRound() {
    team_.run(static_cast<int>(parts_.size()),
              [this](int part) { renderPart(static_cast<std::size_t>(part)); });
    std::fill(mix_.begin(), mix_.end(), 0.0F);
    for (const std::vector<float>& samples : samples_) {
        std::transform(mix_.begin(), mix_.end(), samples.begin(), mix_.begin(), std::plus<>());
    }
    return mix_;
}

} // namespace zelvatone
