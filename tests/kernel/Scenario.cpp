#include "tests/kernel/Scenario.h"

#include "tests/kernel/EngineState.h"

#include "params/ParameterTable.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

using namespace zelvatone;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
// Bytes after which a scenario ends. Every failing look-up prints a line: more of them cost minutes
// and prove nothing more.
constexpr std::size_t kMostPrinted = 1'000'000;

// Numbers of programs whose frequencies run away.
constexpr std::int32_t kLaserShots = 16;
constexpr std::int32_t kRobobass = 26;

enum Status : std::int32_t { kNoteOff = 0x80, kNoteOn = 0x90, kController = 0xB0, kBend = 0xE0 };

} // namespace

std::vector<Renderer> renderersUnderTest() {
    const char* wanted = std::getenv("ZELVATONE_KERNEL"); // NOLINT(concurrency-mt-unsafe)
    std::vector<Renderer> renderers;
    for (const Renderer renderer : kAllRenderers) {
        const bool isWanted = wanted == nullptr ? renderer != Renderer::kReference
                                                : std::string(wanted) == nameOf(renderer);
        if (isWanted && isSupported(renderer)) {
            renderers.push_back(renderer);
        }
    }
    return renderers;
}

Scenario::Scenario(std::uint64_t seed)
    : random_(seed),
      temper_{.longestBlock = random_.oneOf({1, 16, 64, 256, 1024, 4096}),
              .crowd = random_.oneOf({1, 1, 3, 8, 32}),
              .knobs = random_.oneOf({1, 3, 10, 100}),
              .breakage = random_.oneOf({0, 0, 0, 0, 30, 5}),
              .runaways = random_.oneOf({0, 0, 30, 5}),
              .manyModes = random_.oneIn(2)} {
    engines_.push_back(std::make_unique<Engine>(Renderer::kReference));
    names_.emplace_back("reference");
    for (const Renderer renderer : renderersUnderTest()) {
        engines_.push_back(std::make_unique<Engine>(renderer));
        names_.emplace_back(nameOf(renderer));
    }
    prepare();
}

template<class Action>
void Scenario::forAll(Action action) {
    for (const auto& engine : engines_) {
        action(*engine);
    }
}

void Scenario::prepare() {
    const float rate = random_.oneOf({22050.0F, 44100.0F, 48000.0F, 88200.0F, 96000.0F, 192000.0F});
    const auto programs = static_cast<std::int32_t>(engines_[0]->programs.size());
    const std::int32_t program = temper_.runaways > 0 && random_.oneIn(2)
                                     ? random_.oneOf({kLaserShots, kRobobass})
                                     : random_.below(programs);
    forAll([&](Engine& engine) {
        engine.setSampleRate(rate);
        engine.setProgram(program);
    });
    if (temper_.manyModes) {
        setKnob(kModeInit, random_.fraction());
        setKnob(kMaxModes, random_.fraction());
    }
}

std::string Scenario::play(std::int64_t modeSamples) {
    std::string difference;
    std::int64_t spent = 0;
    while (spent < modeSamples && printedBytes_ < kMostPrinted && difference.empty()) {
        act();
        const std::int32_t samples = random_.between(1, temper_.longestBlock);
        difference = renderBlock(samples);
        // Even silence takes its time.
        spent += samples * (activeModes() + 20);
    }
    return difference;
}

std::int64_t Scenario::activeModes() const {
    std::int64_t count = 0;
    for (std::int32_t slot = 0; slot < Engine::kVoiceCount; ++slot) {
        if (engines_[0]->voiceNotes[slot] != kFreeSlot) {
            count += 1 + engines_[0]->voices[slot]->activeCount;
        }
    }
    return count;
}

// What happens before a block.
void Scenario::act() {
    playNotes();
    if (random_.oneIn(temper_.knobs)) {
        for (std::int32_t i = random_.between(1, 4); i > 0; --i) {
            turnKnob();
        }
    }
    if (random_.oneIn(40)) {
        const std::int32_t program = random_.between(-1, 41);
        forAll([=](Engine& engine) { engine.setProgram(program); });
    }
    if (random_.oneIn(20)) {
        const float tempo = random_.oneOf({30.0F, 120.0F, 133.7F, 300.0F, 999.0F, 20000.0F});
        forAll([=](Engine& engine) { engine.setTempo(tempo); });
    }
    if (temper_.breakage > 0 && random_.oneIn(temper_.breakage)) {
        breakSomething();
    }
    if (temper_.runaways > 0 && random_.oneIn(temper_.runaways)) {
        driveAway();
    }
}

void Scenario::playNotes() {
    if (random_.oneIn(3)) {
        for (std::int32_t i = random_.between(1, temper_.crowd); i > 0; --i) {
            sendMidiOfAnyData(kNoteOn);
        }
    }
    if (random_.oneIn(6)) {
        sendMidi(kNoteOff, random_.below(128), 0);
        const auto& notes = engines_[0]->voiceNotes; // one that sounds
        sendMidi(kNoteOff, std::max(notes[random_.below(Engine::kVoiceCount)], 0), 0);
    }
    if (random_.oneIn(5)) {
        for (std::int32_t i = random_.between(1, 8); i > 0; --i) {
            sendMidiOfAnyData(kBend);
        }
    }
    if (random_.oneIn(60)) {
        sendMidi(kController, 123, 0);
    }
}

void Scenario::sendMidiOfAnyData(std::int32_t status) {
    const std::int32_t data1 = random_.below(128);
    const std::int32_t data2 = random_.below(128);
    sendMidi(status, data1, data2);
}

// A message that the event ring has no room for is not sent: its events would be lost, and a ring
// full of events far ahead would leave nothing to hear.
void Scenario::sendMidi(std::int32_t status, std::int32_t data1, std::int32_t data2) {
    const std::int32_t room = engines_[0]->events.free();
    if (room < (status == kController ? 128 : 1)) {
        return;
    }
    const std::int32_t offset = room > EventRing::kBufferSize / 2 ? someOffset() : 0;
    forAll([=](Engine& engine) { engine.processMidi(status, data1, data2, offset); });
}

std::int32_t Scenario::someOffset() {
    switch (random_.below(12)) {
    case 0:
        return random_.between(-3, 1);
    case 1:
        return random_.oneOf({INT32_MIN, INT32_MIN + 1, -100000, INT32_MAX, 2000000000});
    case 2:
        return random_.below(20000);
    case 3:
    case 4:
        return 0;
    default:
        return random_.below(temper_.longestBlock);
    }
}

void Scenario::turnKnob() {
    // Full turns are common in music and lead to the most extreme values.
    const std::int32_t index = random_.below(kParameterCount);
    setKnob(index, random_.oneOf({0.0F, 1.0F, 0.5F, random_.fraction()}));
}

void Scenario::setKnob(std::int32_t index, float normalised) {
    forAll([=](Engine& engine) {
        SynthParameter& parameter = *engine.currentProgram->parameters[index];
        parameter.setValue(parameter.toUnits(parameter.min, parameter.max, normalised));
    });
}

// What knobs and notes bring about within seconds or minutes, at once.
void Scenario::driveAway() {
    switch (random_.below(4)) {
    case 0:
        setKnob(kFreqDrop, 1.0F);
        setKnob(kDropMod, random_.oneOf({0.0F, random_.fraction()}));
        break;
    case 1: {
        // Below 1/1024 no entry is in use.
        const float chop = random_.oneOf({0.0005F, 0.001F, 0.5F, 1.0F});
        forAll([=](Engine& engine) { engine.currentProgram->parameters[kChop]->value = chop; });
        break;
    }
    default:
        scaleFrequencies();
        break;
    }
}

// Takes some modes of a voice far away, all of them or those from some mode on.
void Scenario::scaleFrequencies() {
    const std::int32_t slot = Engine::kVoiceCount - 1 - random_.below(temper_.crowd);
    const std::int32_t first = random_.oneOf({0, random_.below(20)});
    const float factor = random_.oneOf({1e4F, 1e7F, -1e10F, 1e20F, 1e36F, kInfinity, -kInfinity});
    forAll([=](Engine& engine) {
        ModeVoice& voice = *engine.voices[slot];
        for (std::int32_t i = first; i < voice.activeCount; ++i) {
            voice.freq[i] *= factor;
        }
    });
}

void Scenario::breakSomething() {
    switch (random_.below(5)) {
    case 0: {
        const std::int32_t index = random_.below(kParameterCount);
        forAll([=](Engine& engine) { engine.currentProgram->parameters[index]->setValue(kNan); });
        break;
    }
    case 1: {
        const float tempo = random_.oneOf({0.0F, -120.0F, kNan, kInfinity, 1e9F, 1e-9F});
        forAll([=](Engine& engine) { engine.setTempo(tempo); });
        break;
    }
    case 2: {
        const float rate = random_.oneOf({8000.0F, 11025.0F, 44100.0F, 48000.0F, 1.0F});
        forAll([=](Engine& engine) { engine.setSampleRate(rate); });
        break;
    }
    default:
        breakMode();
        break;
    }
}

// Puts an extreme value into a mode of some voice.
void Scenario::breakMode() {
    const std::int32_t slot = Engine::kVoiceCount - 1 - random_.below(4);
    const std::int32_t mode = random_.below(random_.oneOf({1, 10, 100}));
    const std::int32_t array = random_.below(7);
    const float value =
        random_.oneOf({kNan, kInfinity, -kInfinity, 1e30F, -1e12F, 1e7F, -3e5F, -440.0F, 3.0e-39F,
                       0.0F, -0.0F, 6.2831855F, -6.2831855F, 12.566371F, random_.fraction()});
    forAll([=](Engine& engine) {
        ModeVoice& voice = *engine.voices[slot];
        const std::array arrays = {&voice.amp,       &voice.freq,     &voice.phase,
                                   &voice.ampStep,   &voice.freqStep, &voice.targetAmp,
                                   &voice.targetFreq};
        (*arrays[array])[mode] = value;
    });
}

// What an engine has put out in one block.
struct Scenario::Block {
    std::vector<float> left, right;
    std::string lines;
};

Scenario::Block Scenario::render(Engine& engine, std::int32_t samples) {
    Block block;
    block.left.resize(static_cast<std::size_t>(samples));
    block.right.resize(static_cast<std::size_t>(samples));
    std::array<float*, 2> outputs = {block.left.data(), block.right.data()};
    engine.render(nullptr, outputs.data(), samples);
    block.lines = printed_.take();
    return block;
}

std::string Scenario::renderBlock(std::int32_t samples) {
    const Block expected = render(*engines_[0], samples);
    printedBytes_ += expected.lines.size();
    for (const float sample : expected.left) {
        fingerprint_.add(sample);
    }
    for (std::size_t i = 1; i < engines_.size(); ++i) {
        const Block actual = render(*engines_[i], samples);
        std::string difference =
            differenceInSamples(expected.left.data(), actual.left.data(), samples);
        if (difference.empty()) {
            difference = differenceInSamples(actual.left.data(), actual.right.data(), samples);
        }
        if (difference.empty()) {
            difference = differenceInState(*engines_[0], *engines_[i]);
        }
        if (difference.empty() && actual.lines != expected.lines) {
            difference = "printed lines";
        }
        if (!difference.empty()) {
            return names_[i] + ": " + difference;
        }
    }
    return {};
}
