#include "host/render/InstrumentPlayer.h"

#include "host/Error.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

void checkInstrument(const HostedPlugin& plugin) {
    if (!plugin.isInstrument()) {
        throw InputError(plugin.path() + " is an effect, not an instrument");
    }
    const bool canRender = (plugin.record().flags & effFlagsCanReplacing) != 0 &&
                           plugin.record().processReplacing != nullptr;
    if (!canRender || plugin.outputCount() == 0) {
        throw InputError(plugin.path() + " is an instrument that renders no audio");
    }
}

} // namespace

InstrumentPlayer::InstrumentPlayer(HostedPlugin& plugin, const Song& song, EventSchedule schedule,
                                   AutomationSchedule moves)
    : plugin_(plugin),
      transport_(song, plugin.format().sampleRate),
      events_(std::move(schedule), plugin.format().blockSize),
      moves_(std::move(moves)) {
    checkInstrument(plugin);
    const auto block = static_cast<std::size_t>(plugin.format().blockSize);
    const auto inputs = static_cast<std::size_t>(plugin.inputCount());
    const auto outputs = static_cast<std::size_t>(plugin.outputCount());
    samples_.resize((inputs + outputs) * block);
    inputs_.resize(inputs + 1);
    outputs_.resize(outputs);
    for (std::size_t i = 0; i < inputs; ++i) {
        inputs_[i] = samples_.data() + i * block;
    }
    for (std::size_t i = 0; i < outputs; ++i) {
        outputs_[i] = samples_.data() + (inputs + i) * block;
    }
    plugin_.switchOn();
}

InstrumentPlayer::~InstrumentPlayer() {
    plugin_.switchOff();
}

int InstrumentPlayer::channels() const {
    return std::min(2, plugin_.outputCount());
}

void InstrumentPlayer::makeMoves() {
    while (nextMove_ < moves_.size() && moves_[nextMove_].frame <= position_) {
        plugin_.setParameter(moves_[nextMove_].parameter, moves_[nextMove_].value);
        ++nextMove_;
    }
}

void InstrumentPlayer::renderBlock() {
    makeMoves();
    const int frames = plugin_.format().blockSize;
    plugin_.render(transport_.at(position_), events_.next(), inputs_.data(), outputs_.data(),
                   frames);
    position_ += frames;
}

void InstrumentPlayer::addTo(std::span<float> mix, float gain) const {
    const auto count = static_cast<std::size_t>(channels());
    for (std::size_t channel = 0; channel < count; ++channel) {
        const float* output = outputs_[channel];
        for (std::size_t i = channel; i < mix.size(); i += count) {
            mix[i] += *output++ * gain;
        }
    }
}

} // namespace zelvatone
