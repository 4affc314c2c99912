#include "formats/Instrument.h"

#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace zelvatone::test {

namespace {

using Samples = std::vector<float>;
using ProgramChange = Instrument::ProgramChange;

constexpr MidiMessage noteOn(std::int32_t frame, std::uint8_t note) {
    return {.frame = frame, .status = 0x90, .data1 = note, .data2 = 100};
}

constexpr MidiMessage noteOff(std::int32_t frame, std::uint8_t note) {
    return {.frame = frame, .status = 0x80, .data1 = note, .data2 = 0};
}

constexpr MidiMessage controller(std::int32_t frame, std::uint8_t number, std::uint8_t value) {
    return {.frame = frame, .status = 0xB0, .data1 = number, .data2 = value};
}

// Plays one block in which `happen` says what comes; both channels must be the same.
template<class Happen>
Samples play(Instrument& instrument, std::int32_t frames, const Happen& happen) {
    Samples left(static_cast<std::size_t>(frames), kUnwritten);
    Samples right = left;
    instrument.beginBlock(left.data(), right.data(), frames);
    happen();
    instrument.endBlock();
    EXPECT_EQ(bitsOf(left), bitsOf(right));
    return left;
}

Samples play(Instrument& instrument, std::int32_t frames) {
    return play(instrument, frames, [] {});
}

Samples joined(Samples first, const Samples& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

bool isZero(const Samples& samples) {
    return std::all_of(samples.begin(), samples.end(), [](float s) { return s == 0.0F; });
}

class InstrumentTest : public ::testing::Test {
protected:
    // The engine by itself, as the VST 2.4 file plays it: the same program, its messages and
    // blocks.
    Samples renderReference(std::int32_t frames) { return renderBlock(reference_, frames); }
    void sendReference(const MidiMessage& m) {
        reference_.processMidi(m.status & 0xF0, m.data1, m.data2, m.frame);
    }
    void holdNote(std::uint8_t note) {
        play(instrument_, 16, [&] { instrument_.midiAt(noteOn(0, note)); });
    }

    Instrument instrument_{ProgramChange::kFollowed};
    ZelvatoneEngine reference_;
};

TEST_F(InstrumentTest, BlockWithoutChangesIsOneBlockOfTheEngine) {
    for (const MidiMessage& m : {noteOn(0, 60), noteOn(100, 64), noteOff(300, 60)}) {
        sendReference(m);
    }
    const Samples block = play(instrument_, 512, [this] {
        instrument_.midiAt(noteOn(0, 60));
        instrument_.midiAt(noteOn(100, 64));
        instrument_.midiAt(noteOff(300, 60));
    });
    EXPECT_EQ(bitsOf(block), bitsOf(renderReference(512)));
    EXPECT_EQ(bitsOf(play(instrument_, 100)), bitsOf(renderReference(100)));
}

TEST_F(InstrumentTest, ValueCutsTheBlockAtItsSample) {
    const Samples block = play(instrument_, 512, [this] {
        instrument_.midiAt(noteOn(0, 60));
        instrument_.valueAt(200, kChop, 0.25);
        instrument_.midiAt(noteOn(200, 67));
        instrument_.valueAt(300, kChop, 0.25); // the same: no cut
    });
    sendReference(noteOn(0, 60));
    const Samples first = renderReference(200);
    knob(reference_, kChop).setValue(0.25F);
    sendReference(noteOn(0, 67));
    EXPECT_EQ(bitsOf(block), bitsOf(joined(first, renderReference(312))));
}

TEST_F(InstrumentTest, TempoCutsTheBlockAtItsSample) {
    instrument_.setValue(kShiftInterval, -5.0); // 1/32 of a beat: shifts within the block
    instrument_.setValue(kModeShift, 3.0);
    knob(reference_, kShiftInterval).setValue(-5.0F);
    knob(reference_, kModeShift).setValue(3.0F);
    const Samples block = play(instrument_, 4096, [this] {
        instrument_.tempoAt(0, 150.0);
        instrument_.midiAt(noteOn(0, 60));
        instrument_.tempoAt(1000, 733.0);
    });
    reference_.setTempo(150.0F);
    sendReference(noteOn(0, 60));
    const Samples first = renderReference(1000);
    reference_.setTempo(733.0F);
    const Samples parts = joined(first, renderReference(3096));
    EXPECT_EQ(bitsOf(block), bitsOf(parts));
}

TEST_F(InstrumentTest, TempoThatIsNotAboveZeroIsIgnored) {
    holdNote(60);
    sendReference(noteOn(0, 60));
    renderReference(16);
    const Samples block = play(instrument_, 256, [this] {
        instrument_.tempoAt(3, 0.0);
        instrument_.tempoAt(4, -10.0);
        instrument_.tempoAt(5, std::nan(""));
        instrument_.tempoAt(6, std::numeric_limits<double>::infinity());
    });
    EXPECT_EQ(bitsOf(block), bitsOf(renderReference(256)));
}

TEST_F(InstrumentTest, VolumeScalesAndFullVolumeChangesNoBit) {
    const auto playWith = [](std::uint8_t volume) {
        Instrument instrument(ProgramChange::kIgnored);
        return play(instrument, 600, [&] {
            instrument.midiAt(controller(0, 7, volume));
            instrument.midiAt(noteOn(0, 60));
        });
    };
    sendReference(noteOn(0, 60));
    const Samples plain = renderReference(600);
    EXPECT_EQ(bitsOf(playWith(127)), bitsOf(plain));
    const Samples quiet = playWith(64);
    const double gain = (64.0 / 127.0) * (64.0 / 127.0);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        EXPECT_NEAR(static_cast<double>(quiet[i]), static_cast<double>(plain[i]) * gain, 1e-6);
    }
}

TEST_F(InstrumentTest, AllSoundOffIsSilentFromItsSampleOn) {
    holdNote(60);
    const Samples block = play(instrument_, 256, [this] {
        instrument_.midiAt(noteOn(10, 72));
        instrument_.midiAt(controller(100, 120, 0));
    });
    EXPECT_NE(block[99], 0.0F);
    EXPECT_TRUE(isZero({block.begin() + 100, block.end()}));
    EXPECT_TRUE(instrument_.isSilent());
}

TEST_F(InstrumentTest, ResetLeavesNothingOfEarlierNotes) {
    holdNote(60);
    play(instrument_, 2000, [this] {
        instrument_.midiAt({.frame = 0, .status = 0xE0, .data1 = 0, .data2 = 100});
        instrument_.midiAt(controller(5, 7, 10));
        instrument_.midiAt(controller(6, 64, 127));
        instrument_.midiAt(noteOn(1999, 50));
    });
    instrument_.reset();
    EXPECT_TRUE(instrument_.isSilent());
    const auto phrase = [](Instrument& instrument) {
        return play(instrument, 3000, [&] {
            instrument.midiAt(noteOn(0, 62));
            instrument.midiAt(noteOff(1000, 62));
        });
    };
    Instrument fresh(ProgramChange::kFollowed);
    EXPECT_EQ(bitsOf(phrase(instrument_)), bitsOf(phrase(fresh)));
}

TEST_F(InstrumentTest, BypassIsSilentAndTheNoteGoesOnBeneath) {
    holdNote(60);
    sendReference(noteOn(0, 60));
    renderReference(16);
    play(instrument_, 1000, [this] { instrument_.bypassAt(0, true); });
    EXPECT_TRUE(isZero(play(instrument_, 100)));
    instrument_.setBypassed(false);
    play(instrument_, 1000); // fades in
    renderReference(2100);
    EXPECT_EQ(bitsOf(play(instrument_, 100)), bitsOf(renderReference(100)));
}

TEST_F(InstrumentTest, ProgramChangeLoadsItsValuesAtItsSample) {
    const Samples block = play(instrument_, 400, [this] {
        instrument_.midiAt(noteOn(0, 60));
        instrument_.midiAt({.frame = 128, .status = 0xC0, .data1 = 5, .data2 = 0});
        instrument_.midiAt({.frame = 130, .status = 0xC0, .data1 = 42, .data2 = 0}); // none such
    });
    EXPECT_EQ(instrument_.programChanges(), 1U);
    sendReference(noteOn(0, 60));
    const Samples first = renderReference(128);
    reference_.setProgram(5);
    EXPECT_EQ(bitsOf(block), bitsOf(joined(first, renderReference(272))));
}

TEST_F(InstrumentTest, ProgramChangeIsIgnoredWhereTheFormatWantsIt) {
    Instrument instrument(ProgramChange::kIgnored);
    play(instrument, 10,
         [&] { instrument.midiAt({.frame = 0, .status = 0xC0, .data1 = 5, .data2 = 0}); });
    EXPECT_EQ(instrument.programChanges(), 0U);
    EXPECT_EQ(instrument.state(), defaultState());
}

TEST_F(InstrumentTest, LoadingAProgramLeavesTheBankAsItIs) {
    instrument_.loadProgram(3);
    instrument_.setValue(kChop, 0.5);
    instrument_.loadProgram(0);
    EXPECT_EQ(instrument_.state(), defaultState());
    instrument_.loadProgram(3);
    for (std::int32_t i = 0; i < kParameterCount; ++i) {
        EXPECT_EQ(instrument_.value(static_cast<ParameterIndex>(i)),
                  reference_.programs[3].parameters[static_cast<std::size_t>(i)]->value);
    }
    const InstrumentState loaded = instrument_.state();
    instrument_.loadProgram(-1);
    instrument_.loadProgram(42);
    EXPECT_EQ(instrument_.state(), loaded);
    EXPECT_EQ(instrument_.programChanges(), 0U); // messages alone count
}

TEST_F(InstrumentTest, StateOfEveryProgramComesBackThroughItsText) {
    for (std::int32_t program = 0; program < 42; ++program) {
        instrument_.loadProgram(program);
        Instrument other(ProgramChange::kIgnored);
        const auto state = stateOfText(textOfState(instrument_.state()));
        ASSERT_TRUE(state) << program;
        other.setState(*state);
        EXPECT_EQ(other.state(), instrument_.state()) << program;
    }
}

TEST_F(InstrumentTest, IsSilentUntilANoteAndAgainAfterItsRelease) {
    EXPECT_TRUE(instrument_.isSilent());
    instrument_.setValue(kRelease, 0.01); // 441 samples
    holdNote(60);
    EXPECT_FALSE(instrument_.isSilent());
    play(instrument_, 100, [this] { instrument_.midiAt(noteOff(0, 60)); });
    EXPECT_FALSE(instrument_.isSilent());
    play(instrument_, 500);
    EXPECT_TRUE(instrument_.isSilent());
    EXPECT_TRUE(isZero(play(instrument_, 64)));
}

TEST_F(InstrumentTest, TailIsTheReleaseInSamplesOfTheRate) {
    instrument_.setValue(kRelease, 0.5);
    instrument_.setSampleRate(48000.0);
    EXPECT_EQ(instrument_.tail(), 24000U);
    instrument_.setSampleRate(22050.5); // 11025.25 samples
    EXPECT_EQ(instrument_.tail(), 11026U);
}

TEST_F(InstrumentTest, MessagesOutsideTheBlockActAtItsEnds) {
    play(instrument_, 32, [this] { instrument_.midiAt(noteOn(1000, 60)); });
    EXPECT_FALSE(instrument_.isSilent());
    instrument_.reset();
    play(instrument_, 0, [this] { instrument_.midiAt(noteOn(-5, 60)); });
    EXPECT_NE(play(instrument_, 32)[31], 0.0F);
}

TEST_F(InstrumentTest, ValuesThatAreNotNumbersAreIgnored) {
    instrument_.setValue(kAttack, std::nan(""));
    play(instrument_, 8, [this] { instrument_.valueAt(3, kAttack, std::nan("")); });
    EXPECT_EQ(instrument_.value(kAttack), 0.2F);
}

} // namespace

} // namespace zelvatone::test
