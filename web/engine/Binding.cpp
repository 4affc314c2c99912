// What the page's scripts call. A browser loads the engine twice: on the page's thread for values,
// texts and files, on the audio thread for the sound. Each has memory of its own. Texts end with a
// zero and stay until the next call. engine.js has the other side of each function.

#include "formats/Instrument.h"
#include "web/engine/EditedProgram.h"
#include "web/engine/PhraseRenderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#ifdef __wasm__
#define ZELVATONE_EXPORT(name) __attribute__((export_name(#name)))
#else
#define ZELVATONE_EXPORT(name) // compiled here so that warnings and clang-tidy see it
#endif

namespace zelvatone {

namespace {

// More than a browser asks for at once.
constexpr std::int32_t kMostFrames = 4096;

// What a call takes or leaves beside numbers.
struct Exchange {
    std::vector<std::uint8_t> bytes;
    std::string text;
    float tempo = 0.0F;
};

Exchange& exchange() {
    static Exchange shared;
    return shared;
}

EditedProgram& editedProgram() {
    static EditedProgram program;
    return program;
}

const char* leave(std::string text) {
    exchange().text = std::move(text);
    return exchange().text.c_str();
}

ParameterIndex parameterAt(std::int32_t index) {
    return static_cast<ParameterIndex>(index);
}

struct Player {
    Instrument instrument{Instrument::ProgramChange::kIgnored};
    std::array<float, kMostFrames> samples{};
    std::int32_t frames = 0;
};

std::unique_ptr<Player>& playerPlace() {
    static std::unique_ptr<Player> place;
    return place;
}

Player& player() {
    return *playerPlace();
}

std::vector<float>& phrase() {
    static std::vector<float> samples;
    return samples;
}

} // namespace

// Programs and parameters; indices that exist.

ZELVATONE_EXPORT(programCount) std::int32_t programCount() {
    return static_cast<std::int32_t>(factoryBank().size());
}

ZELVATONE_EXPORT(programName) const char* programName(std::int32_t program) {
    return leave(factoryBank().at(static_cast<std::size_t>(program)).name.text());
}

// From 0 to 1.
ZELVATONE_EXPORT(programValue) float programValue(std::int32_t program, std::int32_t index) {
    const SynthProgram& source = factoryBank().at(static_cast<std::size_t>(program));
    return settingOf(*source.parameters.at(static_cast<std::size_t>(index)));
}

ZELVATONE_EXPORT(parameterCount) std::int32_t parameterCount() {
    return kParameterCount;
}

ZELVATONE_EXPORT(parameterName) const char* parameterName(std::int32_t index) {
    return leave(parameterUnits()[parameterAt(index)].name);
}

ZELVATONE_EXPORT(parameterLabel) const char* parameterLabel(std::int32_t index) {
    return leave(parameterUnits()[parameterAt(index)].unit);
}

ZELVATONE_EXPORT(display) const char* display(std::int32_t index, float normalised) {
    return leave(displayAt(parameterAt(index), normalised));
}

// The edited program.

ZELVATONE_EXPORT(setProgram) void setProgram(std::int32_t program) {
    editedProgram().load(program);
}

ZELVATONE_EXPORT(program) std::int32_t program() {
    return editedProgram().number();
}

ZELVATONE_EXPORT(editedName) const char* editedName() {
    return leave(editedProgram().name());
}

ZELVATONE_EXPORT(setParameter) void setParameter(std::int32_t index, float normalised) {
    editedProgram().set(parameterAt(index), normalised);
}

ZELVATONE_EXPORT(parameter) float parameter(std::int32_t index) {
    return editedProgram().setting(parameterAt(index));
}

ZELVATONE_EXPORT(units) float units(std::int32_t index) {
    return editedProgram().units(parameterAt(index));
}

// Makes room for bytes that a call is to take, and returns where they go.
ZELVATONE_EXPORT(room) std::uint8_t* room(std::int32_t size) {
    exchange().bytes.assign(static_cast<std::size_t>(size), 0);
    return exchange().bytes.data();
}

// Leaves the bytes of an .fxp file where `room` has them; returns how many.
ZELVATONE_EXPORT(save) std::int32_t save() {
    exchange().bytes = editedProgram().file();
    return static_cast<std::int32_t>(exchange().bytes.size());
}

ZELVATONE_EXPORT(bytes) const std::uint8_t* bytes() {
    return exchange().bytes.data();
}

// Takes the file in the room. Returns what is wrong with it, or an empty text.
ZELVATONE_EXPORT(load) const char* load() {
    return leave(editedProgram().takeFile(exchange().bytes));
}

ZELVATONE_EXPORT(state) const char* state(float tempo) {
    return leave(editedProgram().link(tempo));
}

// Takes the text in the room. Returns its tempo, or 0 for a text that is not a state.
ZELVATONE_EXPORT(setState) float setState() {
    const std::string text(exchange().bytes.begin(), exchange().bytes.end());
    float tempo = 0.0F;
    return editedProgram().takeLink(text, tempo) ? tempo : 0.0F;
}

// The sound. A new instrument for this rate in Hz; all others need it.

ZELVATONE_EXPORT(startInstrument) void startInstrument(double sampleRate) {
    playerPlace() = std::make_unique<Player>();
    player().instrument.setSampleRate(sampleRate);
}

// Ends all sound, lifts pedals, centres the bend. Between blocks.
ZELVATONE_EXPORT(reset) void reset() {
    player().instrument.reset();
}

// A block of at most kMostFrames samples, then what happens in it, by rising sample, then its end.
// Returns where the samples will be.
ZELVATONE_EXPORT(beginBlock) float* beginBlock(std::int32_t frames) {
    Player& current = player();
    current.frames = std::clamp(frames, 0, kMostFrames);
    current.instrument.beginBlock(current.samples.data(), current.samples.data(), current.frames);
    return current.samples.data();
}

ZELVATONE_EXPORT(midiAt)
void midiAt(std::int32_t frame, std::int32_t status, std::int32_t data1, std::int32_t data2) {
    player().instrument.midiAt(midiMessage(frame, static_cast<std::uint8_t>(status),
                                           static_cast<std::uint8_t>(data1),
                                           static_cast<std::uint8_t>(data2)));
}

// `units`: as units() has it.
ZELVATONE_EXPORT(valueAt) void valueAt(std::int32_t frame, std::int32_t index, float units) {
    player().instrument.valueAt(frame, parameterAt(index), static_cast<double>(units));
}

ZELVATONE_EXPORT(tempoAt) void tempoAt(std::int32_t frame, float beatsPerMinute) {
    player().instrument.tempoAt(frame, static_cast<double>(beatsPerMinute));
}

// Returns the highest sample of the block, either way.
ZELVATONE_EXPORT(endBlock) float endBlock() {
    Player& current = player();
    current.instrument.endBlock();
    float peak = 0.0F;
    for (std::int32_t i = 0; i < current.frames; ++i) {
        peak = std::max(peak, std::fabs(current.samples[static_cast<std::size_t>(i)]));
    }
    return peak;
}

ZELVATONE_EXPORT(soundingNotes) std::int32_t soundingNotes() {
    return player().instrument.soundingNotes();
}

// Renders the phrase with factory program `program`, which exists; returns how many samples it has.
ZELVATONE_EXPORT(renderPhrase) std::int32_t renderPhraseOf(std::int32_t program) {
    phrase() = renderPhrase(program);
    return static_cast<std::int32_t>(phrase().size());
}

ZELVATONE_EXPORT(phraseMessageCount) std::int32_t phraseMessageCount() {
    return static_cast<std::int32_t>(phraseMessages().size());
}

// When message `i` of the phrase is due, in seconds from its start.
ZELVATONE_EXPORT(phraseSeconds) double phraseSeconds(std::int32_t i) {
    return static_cast<double>(phraseMessages().at(static_cast<std::size_t>(i)).frame) /
           kPhraseRate;
}

// Its three bytes, the first in the highest place.
ZELVATONE_EXPORT(phraseMessage) std::int32_t phraseMessage(std::int32_t i) {
    const MidiMessage message = phraseMessages().at(static_cast<std::size_t>(i));
    return message.status << 16 | message.data1 << 8 | message.data2;
}

ZELVATONE_EXPORT(phrase) const float* phraseSamples() {
    return phrase().data();
}

} // namespace zelvatone
