#include "formats/Instrument.h"

#include "params/CheckedAccess.h"
#include "params/FactoryPrograms.h"
#include "params/SharedValue.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zelvatone {

const ProgramBank& factoryBank() {
    static const ProgramBank kBank = makeFactoryBank();
    return kBank;
}

// What the audio thread reads is made here: the factory bank by the first instrument.
Instrument::Instrument(ProgramChange programChange)
    : engine_(ProgramBank(1, factoryBank().front())),
      followsProgramChange_(programChange == ProgramChange::kFollowed) {
    parameterUnits();
    setSampleRate(static_cast<double>(engine_.sampleRate));
}

void Instrument::setSampleRate(double rate) {
    engine_.setSampleRate(static_cast<float>(rate));
    gain_.setSampleRate(rate);
}

void Instrument::reset() {
    engine_.stopSound();
    engine_.pitchBend(0.0F);
    controllers_.reset();
    gain_.reset();
    followGain();
}

SynthParameter& Instrument::parameter(ParameterIndex index) const {
    return *checkedAt(engine_.currentProgram->parameters, index);
}

float Instrument::value(ParameterIndex index) const {
    return loadShared(parameter(index).value);
}

void Instrument::setValue(ParameterIndex index, double units) {
    if (!std::isnan(units)) {
        parameter(index).setValue(nearestValue(parameterUnits()[index], units));
    }
}

bool Instrument::isBypassed() const {
    return loadShared(isBypassed_);
}

void Instrument::setBypassed(bool isBypassed) {
    storeShared(isBypassed_, isBypassed);
}

void Instrument::loadProgram(std::int32_t program) {
    const ProgramBank& bank = factoryBank();
    if (program < 0 || program >= static_cast<std::int32_t>(bank.size())) {
        return;
    }
    const SynthProgram& source = checkedAt(bank, program);
    for (const ParameterUnits& units : parameterUnits()) {
        parameter(units.index).setValue(checkedAt(source.parameters, units.index)->value);
    }
}

InstrumentState Instrument::state() const {
    InstrumentState state{.values = {}, .isBypassed = isBypassed()};
    for (const ParameterUnits& units : parameterUnits()) {
        checkedAt(state.values, units.index) = value(units.index);
    }
    return state;
}

void Instrument::setState(const InstrumentState& state) {
    for (const ParameterUnits& units : parameterUnits()) {
        setValue(units.index, static_cast<double>(checkedAt(state.values, units.index)));
    }
    setBypassed(state.isBypassed);
}

void Instrument::beginBlock(float* left, float* right, std::int32_t frames) {
    left_ = left;
    right_ = right;
    frames_ = frames;
    done_ = 0;
    followGain(); // of a bypass that another thread has set
}

void Instrument::midiAt(const MidiMessage& message) {
    controllers_.take(message, *this);
}

void Instrument::valueAt(std::int32_t frame, ParameterIndex index, double units) {
    if (std::isnan(units) || nearestValue(parameterUnits()[index], units) == value(index)) {
        return; // nothing to cut the block for
    }
    renderTo(frame);
    setValue(index, units);
}

void Instrument::tempoAt(std::int32_t frame, double beatsPerMinute) {
    const auto tempo = static_cast<float>(beatsPerMinute);
    if (!(tempo > 0.0F) || !std::isfinite(tempo) || tempo == engine_.tempo) {
        return;
    }
    renderTo(frame);
    engine_.setTempo(tempo);
}

void Instrument::bypassAt(std::int32_t frame, bool isBypassed) {
    if (isBypassed == this->isBypassed()) {
        return;
    }
    renderTo(frame);
    setBypassed(isBypassed);
    followGain();
}

void Instrument::endBlock() {
    renderTo(frames_);
}

bool Instrument::isSilent() const {
    return engine_.isSilent() && gain_.isSettled();
}

std::int32_t Instrument::soundingNotes() const {
    const auto& envelopes = engine_.envelopes;
    return static_cast<std::int32_t>(
        std::count_if(envelopes.begin(), envelopes.end(),
                      [](const auto& envelope) { return envelope->isActive(); }));
}

std::uint32_t Instrument::tail() const {
    const auto rate = static_cast<double>(engine_.sampleRate);
    return static_cast<std::uint32_t>(std::ceil(static_cast<double>(value(kRelease)) * rate));
}

void Instrument::play(const MidiMessage& message) {
    // Messages wait in the engine; one at the end of the block still acts within it.
    const std::int32_t frame = std::clamp(message.frame, done_, std::max(done_, frames_ - 1));
    engine_.processMidi(message.kind(), message.data1, message.data2, frame - done_);
}

void Instrument::setGain(float /*gain*/, std::int32_t frame) {
    if (isBypassed()) {
        return; // followed when the bypass ends
    }
    renderTo(frame);
    followGain();
}

void Instrument::stopSound(std::int32_t frame) {
    renderTo(frame);
    engine_.stopSound();
}

void Instrument::chooseProgram(std::int32_t program, std::int32_t frame) {
    if (!followsProgramChange_ || program >= static_cast<std::int32_t>(factoryBank().size())) {
        return;
    }
    renderTo(frame);
    loadProgram(program);
    ++programChanges_;
}

void Instrument::renderTo(std::int32_t frame) {
    const std::int32_t count = std::min(frame, frames_) - done_;
    if (count <= 0) {
        return;
    }
    std::array<float*, 2> outputs{left_ + done_, right_ + done_};
    engine_.render(nullptr, outputs.data(), count);
    gain_.apply(outputs[0], count);
    std::copy_n(outputs[0], count, outputs[1]); // the instrument is mono
    done_ += count;
}

void Instrument::followGain() {
    gain_.moveTo(isBypassed() ? 0.0F : controllers_.gain());
}

} // namespace zelvatone
