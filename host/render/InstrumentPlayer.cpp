#include "host/render/InstrumentPlayer.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

// Room for the fullest block, so that the plug-in gets each in one list.
PerformerPlan withRoomFor(const EventCounts& most, PerformerPlan plan) {
    plan.most.midi = std::max(plan.most.midi, most.midi);
    plan.most.exclusive = std::max(plan.most.exclusive, most.exclusive);
    return plan;
}

} // namespace

InstrumentPlayer::InstrumentPlayer(HostedPlugin& plugin, const Song& song, EventSchedule schedule,
                                   AutomationSchedule moves, const PerformerPlan& plan)
    : blockSize_(plugin.format().blockSize),
      transport_(song, plugin.format().sampleRate),
      events_(std::move(schedule), blockSize_),
      performer_(plugin, transport_, withRoomFor(events_.most(), plan)),
      moves_(std::move(moves)) {}

void InstrumentPlayer::makeMoves() {
    while (nextMove_ < moves_.size() && moves_[nextMove_].frame <= performer_.position()) {
        performer_.setParameter(moves_[nextMove_].parameter, moves_[nextMove_].value);
        ++nextMove_;
    }
}

void InstrumentPlayer::renderBlock() {
    makeMoves();
    performer_.beginBlock(blockSize_);
    events_.next([this](std::int32_t offset, std::span<const std::uint8_t> message) {
        performer_.take(offset, message);
    });
    performer_.endBlock();
}

void InstrumentPlayer::addTo(std::span<float> mix, float gain) const {
    const auto count = static_cast<std::size_t>(channels());
    for (std::size_t channel = 0; channel < count; ++channel) {
        const float* output = performer_.output(static_cast<int>(channel));
        for (std::size_t i = channel; i < mix.size(); i += count) {
            mix[i] += *output++ * gain;
        }
    }
}

} // namespace zelvatone
