// What most tests of the instrument need: an engine, knobs, notes and blocks of sound.
#pragma once

#include "engine/SynthEvent.h"
#include "engine/ZelvatoneEngine.h"
#include "params/ParameterTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvatone::test {

// An event that runs whatever a test wants to happen in the middle of a block.
class CallbackEvent final : public SynthEvent {
public:
    explicit CallbackEvent(const std::function<void()>* action)
        : SynthEvent(nullptr), action_(action) {}
    void apply() override { (*action_)(); }

private:
    const std::function<void()>* action_; // not owned: events are destroyed as plain values
};

inline std::vector<std::uint32_t> bitsOf(const std::vector<float>& samples) {
    std::vector<std::uint32_t> bits;
    bits.reserve(samples.size());
    for (const float sample : samples) {
        bits.push_back(std::bit_cast<std::uint32_t>(sample));
    }
    return bits;
}

// A value that no rendering produces: a sample that was not written shows.
constexpr float kUnwritten = 12345.678F;

// Renders one block. Both channels must be written and be the same to the bit; one is returned.
inline std::vector<float> renderBlock(SynthEngine& engine, std::int32_t frames) {
    std::vector<float> left(static_cast<std::size_t>(frames), kUnwritten);
    std::vector<float> right(static_cast<std::size_t>(frames), -kUnwritten);
    std::array<float*, 2> outputs{left.data(), right.data()};
    engine.render(nullptr, outputs.data(), frames);
    EXPECT_EQ(bitsOf(left), bitsOf(right));
    return left;
}

inline SynthParameter& knob(SynthEngine& engine, ParameterIndex index) {
    return *engine.currentProgram->parameters.at(static_cast<std::size_t>(index));
}

// For the names of tests, which take no blanks.
inline std::string nameWithoutBlanks(ParameterIndex index) {
    const SynthProgram program = makeDefaultProgram();
    std::string name = program.parameters.at(static_cast<std::size_t>(index))->name;
    std::erase(name, ' ');
    return name;
}

// One mode that stays alone: the note's own sine, without partials, glides or shifts. Knobs reach
// the voices at the start of a block, so one without samples follows, for notes that a test starts
// directly.
inline void useSingleMode(SynthEngine& engine) {
    knob(engine, kModeInit).setValue(1.0F);
    knob(engine, kMinModes).setValue(1.0F);
    knob(engine, kMaxModes).setValue(1.0F);
    engine.render(nullptr, nullptr, 0);
}

// Seconds and a level, straight into the program.
inline void useEnvelope(SynthEngine& engine, float attack, float decay, float sustain,
                        float release) {
    knob(engine, kAttack).setValue(attack);
    knob(engine, kDecay).setValue(decay);
    knob(engine, kSustain).setValue(sustain);
    knob(engine, kRelease).setValue(release);
}

// How many slots stand at `state`: a note, kFreeSlot or kReleasedSlot.
inline std::int32_t slotsAt(const SynthEngine& engine, std::int32_t state) {
    return static_cast<std::int32_t>(
        std::count(engine.voiceNotes.begin(), engine.voiceNotes.end(), state));
}

class EngineTest : public ::testing::Test {
protected:
    ZelvatoneEngine engine_;

    std::vector<float> render(std::int32_t frames) { return renderBlock(engine_, frames); }
    void set(ParameterIndex index, float units) { knob(engine_, index).setValue(units); }

    // The voice and the envelope of a note that was given to an engine without notes: 0 for the
    // first, which takes the highest slot, 1 for the second and so on.
    ModeVoice& voice(std::int32_t note = 0) { return *engine_.voices.at(slotOf(note)); }
    ADSR& envelope(std::int32_t note = 0) { return *engine_.envelopes.at(slotOf(note)); }

    // Lets `action` run where an event with this offset would.
    void at(std::int32_t deltaFrames, std::function<void()> action) {
        actions_.push_back(std::make_unique<std::function<void()>>(std::move(action)));
        ASSERT_EQ(engine_.events.write({deltaFrames, new CallbackEvent(actions_.back().get())}), 1);
    }

private:
    static std::size_t slotOf(std::int32_t note) {
        return static_cast<std::size_t>(ZelvatoneEngine::kVoiceCount - 1 - note);
    }

    std::vector<std::unique_ptr<std::function<void()>>> actions_;
};

} // namespace zelvatone::test
