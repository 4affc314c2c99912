#include "bench/Loads.h"

#include "params/ParameterTable.h"

#include <array>
#include <bit>

namespace bench {

namespace {

using zelvatone::ParameterIndex;
using zelvatone::ZelvatoneEngine;

constexpr std::int32_t kNoteOn = 0x90;
constexpr std::int32_t kPitchBend = 0xE0;
constexpr std::int32_t kAllVoices = ZelvatoneEngine::kVoiceCount;

void set(ZelvatoneEngine& engine, ParameterIndex index, float units) {
    engine.currentProgram->parameters[index]->setValue(units);
}

void render(ZelvatoneEngine& engine, std::int32_t blocks) {
    renderBlocks(engine, blocks, kEmptyHash);
}

void setModes(ZelvatoneEngine& engine, std::int32_t initial, std::int32_t fewest,
              std::int32_t most) {
    set(engine, zelvatone::kModeInit, static_cast<float>(initial));
    set(engine, zelvatone::kMinModes, static_cast<float>(fewest));
    set(engine, zelvatone::kMaxModes, static_cast<float>(most));
}

// The shortest attack and decay: sustain comes soon.
void shortenStart(ZelvatoneEngine& engine) {
    set(engine, zelvatone::kAttack, 0.01F);
    set(engine, zelvatone::kDecay, 0.01F);
}

// Starts all voices at the same sample, which the event queue would spread over a few.
void startTogether(ZelvatoneEngine& engine, std::int32_t lowest) {
    render(engine, 1); // notes read the settings of the last block
    for (std::int32_t i = 0; i < kAllVoices; ++i) {
        engine.noteOn(lowest + i, 100);
    }
}

void playSilence(ZelvatoneEngine& engine) {
    engine.setSampleRate(kSampleRate);
}

void playOneDefaultNote(ZelvatoneEngine& engine) {
    engine.setSampleRate(kSampleRate);
    render(engine, 1);
    engine.noteOn(60, 100);
    render(engine, 300); // past the default attack and decay
}

void playTenModes(ZelvatoneEngine& engine) {
    holdNotes(engine, 36, kAllVoices, 10);
}

void playHundredModes(ZelvatoneEngine& engine) {
    holdNotes(engine, 36, kAllVoices, 100);
}

void playHighNotes(ZelvatoneEngine& engine) {
    holdNotes(engine, 72, kAllVoices, 100);
}

void playWithDrop(ZelvatoneEngine& engine) {
    set(engine, zelvatone::kFreqDrop, -4.0F);
    holdNotes(engine, 36, kAllVoices, 100);
}

// Shifts every 1/32 beat, each of which sends all amplitudes and half of the frequencies on towards
// their targets; with the longest blend they never arrive.
void playShifting(ZelvatoneEngine& engine) {
    engine.setSampleRate(kSampleRate);
    set(engine, zelvatone::kShiftInterval, -5.0F);
    set(engine, zelvatone::kBlendTime, 1.0F);
    set(engine, zelvatone::kExitPeel, 0.5F);
    setModes(engine, 50, 100, 100);
    shortenStart(engine);
    startTogether(engine, 36);
    render(engine, 40);
}

void playPending(ZelvatoneEngine& engine) {
    engine.setSampleRate(kSampleRate);
    for (std::int32_t i = 0; i < 250; ++i) {
        engine.processMidi(kPitchBend, 0, 64, 2000000000);
    }
}

// Shifts every 1/8 beat at a blend short enough to end in between.
void prepareShifts(ZelvatoneEngine& engine) {
    engine.setSampleRate(kSampleRate);
    set(engine, zelvatone::kShiftInterval, -3.0F);
    shortenStart(engine);
}

void shiftTogether(ZelvatoneEngine& engine) {
    prepareShifts(engine);
    set(engine, zelvatone::kJitter, 5.0F);
    setModes(engine, 100, 100, 100);
    startTogether(engine, 36);
    set(engine, zelvatone::kJitter, 10.0F); // the shift has somewhere to go
}

void startNotes(ZelvatoneEngine& engine) {
    prepareShifts(engine);
    setModes(engine, 100, 100, 100);
    render(engine, 1);
}

// 32 notes through the queue, spread over the block.
void startNotesInBlock(ZelvatoneEngine& engine, std::int32_t number) {
    if (number == 1) {
        for (std::int32_t i = 0; i < kAllVoices; ++i) {
            engine.processMidi(kNoteOn, 36 + i, 100, 2 * i);
        }
    }
}

void leaveTogether(ZelvatoneEngine& engine) {
    prepareShifts(engine);
    setModes(engine, 100, 20, 100);
    startTogether(engine, 36);
    setModes(engine, 100, 20, 20);
}

void enterTogether(ZelvatoneEngine& engine) {
    prepareShifts(engine);
    setModes(engine, 10, 10, 10);
    startTogether(engine, 36);
    setModes(engine, 10, 100, 100);
}

void bendEverySecondSample(ZelvatoneEngine& engine, std::int32_t number) {
    for (std::int32_t sample = 1; sample <= kBlock; sample += 2) {
        engine.processMidi(kPitchBend, 0, (number + sample) % 128, sample);
    }
}

constexpr std::array kSteadyLoads = {
    Load{"steady", "32 notes of 100 modes", 20, playHundredModes, nullptr},
    Load{"drop", "the same with frequency drop", 15, playWithDrop, nullptr},
    Load{"shifting", "32 notes of 100 modes, shifts and glides all the time", 20, playShifting,
         nullptr},
    Load{"high", "32 notes of 100 modes from C5 up: fmod", 12, playHighNotes, nullptr},
    Load{"few modes", "32 notes of 10 modes", 200, playTenModes, nullptr},
    Load{"one note", "the default program, one note of 10 modes", 5000, playOneDefaultNote,
         nullptr},
    Load{"silence", "no note", 30000, playSilence, nullptr},
    Load{"pending", "no note, 250 events far ahead", 300, playPending, nullptr},
};

constexpr std::array kWorstBlockLoads = {
    Load{"shift", "32 voices shift in one sample", 100, shiftTogether, nullptr},
    Load{"note-ons", "32 note-ons in one block", 4, startNotes, startNotesInBlock},
    Load{"leave", "32 voices go from 100 to 20 modes at once", 100, leaveTogether, nullptr},
    Load{"enter", "32 voices go from 10 to 100 modes at once", 100, enterTogether, nullptr},
    Load{"bends", "a pitch bend at every second sample", 20, playHundredModes,
         bendEverySecondSample},
};

} // namespace

std::span<const Load> steadyLoads() {
    return kSteadyLoads;
}

std::span<const Load> worstBlockLoads() {
    return kWorstBlockLoads;
}

void holdNotes(ZelvatoneEngine& engine, std::int32_t lowest, std::int32_t notes,
               std::int32_t modes) {
    engine.setSampleRate(kSampleRate);
    setModes(engine, modes, 0, 100);
    shortenStart(engine);
    render(engine, 1);
    for (std::int32_t i = 0; i < notes; ++i) {
        engine.noteOn(lowest + i, 100);
    }
    render(engine, 20);
}

std::uint64_t renderBlocks(ZelvatoneEngine& engine, std::int32_t count, std::uint64_t hash) {
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
    std::array<float*, 2> outputs = {left.data(), right.data()};
    for (std::int32_t i = 0; i < count; ++i) {
        engine.render(nullptr, outputs.data(), kBlock);
        for (const float sample : left) {
            hash = (hash ^ std::bit_cast<std::uint32_t>(sample)) * 0x100000001B3U; // FNV-1a
        }
    }
    return hash;
}

} // namespace bench
