// CLAP's own note events, beside the MIDI messages that they stand for.
#include "tests/clap/InstanceFixture.h"

namespace zelvatone::test {

namespace {

class ClapNotes : public ClapTest {
protected:
    // What an instance of its own makes of one block of events.
    template<class Event>
    static std::vector<float> soundOf(const std::vector<Event>& events) {
        ClapInstance instance(clapLibrary(), kClapId);
        instance.activate(kClapRate, kClapFrames);
        InputList list;
        OutputList sent;
        for (const Event& event : events) {
            list.add(event);
        }
        return instance.play(kClapFrames, list, sent).at(0);
    }

    // Holds `keys`, ends what `off` says and tells whether all is silent when releases are over.
    bool isSilentAfter(std::initializer_list<clap::NoteEvent> keys, const clap::NoteEvent& off) {
        for (const clap::NoteEvent& key : keys) {
            events_.add(key);
        }
        play(512);
        events_.add(off);
        clap::ProcessStatus status = clap::kProcessContinue;
        for (int i = 0; i < 10; ++i) { // the default release takes 0.3 s
            play(kClapFrames, &status);
        }
        return status == clap::kProcessSleep;
    }
};

// round(v x 127): 0.5 gives 64, halves going up; what rounds to 0 is still a note, the softest.
TEST_F(ClapNotes, VelocityRoundsToTheStepsOfMidi) {
    const struct {
        double velocity;
        std::uint8_t midi;
    } cases[] = {{1.0, 127}, {0.5, 64}, {100.4 / 127, 100}, {100.6 / 127, 101}, {0.0, 1}};
    for (const auto& one : cases) {
        EXPECT_EQ(soundOf<clap::NoteEvent>({note(0, clap::kNoteOn, 60, one.velocity)}),
                  soundOf<clap::MidiEvent>({midi(0, 0x90, 60, one.midi)}))
            << one.velocity;
    }
}

TEST_F(ClapNotes, NotesActAtTheSampleOfTheirMidiMessages) {
    EXPECT_EQ(soundOf<clap::NoteEvent>(
                  {note(100, clap::kNoteOn, 60, 1.0), note(900, clap::kNoteOff, 60)}),
              soundOf<clap::MidiEvent>({midi(100, 0x90, 60, 127), midi(900, 0x80, 60, 0)}));
}

TEST_F(ClapNotes, NoteOffWithoutAKeyEndsAllNotes) {
    EXPECT_TRUE(isSilentAfter({note(0, clap::kNoteOn, 60), note(0, clap::kNoteOn, 67, 1.0, 3, 9)},
                              note(0, clap::kNoteOff, -1, 0.0, -1, -1)));
}

TEST_F(ClapNotes, NoteOffWithANumberEndsThatNote) {
    EXPECT_FALSE(
        isSilentAfter({note(0, clap::kNoteOn, 60, 1.0, 7), note(0, clap::kNoteOn, 67, 1.0, 8)},
                      note(0, clap::kNoteOff, -1, 0.0, 7, -1)));
    EXPECT_TRUE(isSilentAfter({}, note(0, clap::kNoteOff, -1, 0.0, 8, -1)));
}

TEST_F(ClapNotes, KeyOutsideMidiIsIgnored) {
    EXPECT_TRUE(isSilentAfter({note(0, clap::kNoteOn, 128), note(0, clap::kNoteOn, -1)},
                              note(0, clap::kNoteOff, 128)));
}

TEST_F(ClapNotes, ThePedalHoldsNotesOfBothKinds) {
    events_.add(midi(0, 0xB0, 64, 127));
    EXPECT_FALSE(isSilentAfter({note(0, clap::kNoteOn, 60)}, note(0, clap::kNoteOff, 60)));
    events_.add(midi(0, 0xB0, 64, 0));
    EXPECT_TRUE(isSilentAfter({}, note(0, clap::kNoteOff, 60)));
}

// The pedal that counts is that of the note's own channel.
TEST_F(ClapNotes, NoteOffOfAKeyOnAnyChannelFindsTheChannelOfTheNote) {
    events_.add(midi(0, 0xB3, 64, 127));
    EXPECT_FALSE(isSilentAfter({note(0, clap::kNoteOn, 60, 1.0, -1, 3)},
                               note(0, clap::kNoteOff, 60, 0.0, -1, -1)));
    events_.add(midi(0, 0xB3, 64, 0));
    EXPECT_TRUE(isSilentAfter({note(0, clap::kNoteOn, 72, 1.0, -1, 4)},
                              note(0, clap::kNoteOff, 72, 0.0, -1, -1)));
}

TEST_F(ClapNotes, AllSoundOffSleepsAtOnce) {
    events_.add(note(0, clap::kNoteOn, 60));
    play(512);
    events_.add(midi(100, 0xB0, 120, 0));
    clap::ProcessStatus status = clap::kProcessContinue;
    const std::vector<float> block = play(512, &status);
    EXPECT_TRUE(isSilent({block.begin() + 100, block.end()}));
    EXPECT_EQ(status, clap::kProcessSleep);
}

TEST_F(ClapNotes, BypassIsSilent) {
    events_.add(note(0, clap::kNoteOn, 60));
    play(512);
    events_.add(paramValue(0, 1000, 1.0));
    play(512);
    EXPECT_TRUE(isSilent(play(512)));
    EXPECT_EQ(value(1000), 1.0);
}

TEST_F(ClapNotes, TailIsTheRelease) {
    events_.add(paramValue(0, 21, 1.5)); // "Release", s
    play(16);
    const auto* tail = instance_.extension<clap::PluginTail>(clap::kTailId);
    EXPECT_EQ(tail->get(&instance_.plugin()), 66150U); // 1.5 x 44100
    const auto* latency = instance_.extension<clap::PluginLatency>(clap::kLatencyId);
    EXPECT_EQ(latency->get(&instance_.plugin()), 0U);
}

} // namespace

} // namespace zelvatone::test
