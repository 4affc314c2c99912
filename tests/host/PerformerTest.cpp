#include "host/render/Performer.h"

#include "host/midi/MidiFileReader.h"
#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"
#include "tests/support/plugins/PulseLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;

constexpr double kRate = 1000.0;
constexpr int kBlock = 64;

Song emptySong() {
    return makeSong(parseMidiFile(midiFileBytes(0, 500, {TrackBytes().end(1)})));
}

struct Timed {
    int offset;
    Bytes message;
};

// One block.
std::vector<float> play(Performer& performer, const std::vector<Timed>& events,
                        int frames = kBlock) {
    performer.beginBlock(frames);
    for (const Timed& event : events) {
        performer.take(event.offset, event.message);
    }
    performer.endBlock();
    return {performer.output(0), performer.output(0) + frames};
}

// The pulse instrument: what it saw, and a note's velocity / 128 as its left sample.
class PulsePerformer : public ::testing::Test {
protected:
    const PulseLog& log() {
        return *reinterpret_cast<PulseLog*>(plugin_.request(effVendorSpecific, kPulseLogRequest));
    }
    // What it was handed, with the sample of each from the start.
    std::vector<Timed> seen() {
        std::vector<Timed> events;
        for (const PulseEvent& event : log().events) {
            const double start = log().times[static_cast<std::size_t>(event.block)].samplePos;
            events.push_back({static_cast<int>(start) + event.offset, event.bytes});
        }
        return events;
    }
    std::vector<double> partStarts() {
        std::vector<double> starts;
        for (const VstTimeInfo& time : log().times) {
            starts.push_back(time.samplePos);
        }
        return starts;
    }

    const PluginLibrary library_{testPlugin("pulse")};
    HostedPlugin plugin_{library_, {kRate, kBlock}};
    const Song song_ = emptySong();
    const Transport transport_{song_, kRate};
};

MATCHER_P2(IsAt, offset, message, "") {
    return arg.offset == offset && arg.message == message;
}

TEST_F(PulsePerformer, NotesThatWaitForThePedalEndWhereItGoesUp) {
    Performer performer(plugin_, transport_, {});
    play(performer, {{0, {0x90, 60, 64}}, {1, {0xB0, 64, 127}}, {9, {0x80, 60, 30}}});
    play(performer, {{7, {0xB0, 64, 0}}});
    EXPECT_THAT(seen(),
                ElementsAre(IsAt(0, Bytes{0x90, 60, 64}), IsAt(kBlock + 7, Bytes{0x80, 60, 0})));
    EXPECT_THAT(partStarts(), ElementsAre(0, kBlock)) << "a pedal cuts no block";
}

TEST_F(PulsePerformer, VolumeScalesFromItsSampleOn) {
    Performer performer(plugin_, transport_, {});
    // At 1000 Hz a move of 5 ms ends 5 samples after it began.
    const auto samples =
        play(performer, {{9, {0x90, 60, 64}}, {10, {0xB0, 7, 0}}, {15, {0x90, 60, 64}}});
    EXPECT_EQ(samples[9], 0.5F);
    EXPECT_EQ(samples[15], 0.0F);
    EXPECT_THAT(partStarts(), ElementsAre(0, 10));
    // 40 dB a decade: a quarter at half the value.
    const auto louder =
        play(performer, {{0, {0xB0, 7, 127}}, {0, {0xB0, 11, 64}}, {9, {0x90, 60, 64}}});
    EXPECT_NEAR(louder[9], 0.5F * (64.0F / 127.0F) * (64.0F / 127.0F), 1e-6F);
}

TEST_F(PulsePerformer, RawMessagesArriveAsTheyAre) {
    Performer performer(plugin_, transport_, {.isRaw = true});
    const std::vector<Timed> events{{0, {0x90, 60, 64}}, {1, {0xB0, 64, 127}}, {2, {0x80, 60, 30}},
                                    {3, {0xB0, 7, 0}},   {4, {0xB0, 120, 0}},  {5, {0xE0, 1, 2}}};
    play(performer, events);
    ASSERT_EQ(seen().size(), events.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        EXPECT_THAT(seen()[i], IsAt(events[i].offset, events[i].message)) << i;
    }
    EXPECT_THAT(partStarts(), ElementsAre(0));
}

TEST_F(PulsePerformer, BendsPassToAPlugInOfUnknownRange) {
    Performer performer(plugin_, transport_, {});
    play(performer, {{5, {0xE3, 1, 100}}, {6, {0xF0, 1, 0xF7}}, {7, {0xD0, 9}}});
    EXPECT_THAT(seen(), ElementsAre(IsAt(5, Bytes{0xE3, 1, 100}), IsAt(6, Bytes{0xF0, 1, 0xF7}),
                                    IsAt(7, Bytes{0xD0, 9, 0})));
}

TEST_F(PulsePerformer, MoreMessagesThanThereIsRoomForAllArrive) {
    Performer performer(plugin_, transport_, {.most = {.midi = 3, .exclusive = 0}});
    std::vector<Timed> events;
    for (int i = 0; i < 10; ++i) {
        events.push_back({i, {0x90, static_cast<std::uint8_t>(i), 64}});
    }
    events.push_back({20, {0xF0, 0xF7}}); // there is room for none
    play(performer, events);
    EXPECT_EQ(seen().size(), 10U);
    EXPECT_THAT(partStarts(), ElementsAre(0));
}

TEST_F(PulsePerformer, AllSoundOffWithoutASpareEndsTheNotesThatSound) {
    Performer performer(plugin_, transport_, {});
    play(performer, {{0, {0x91, 60, 64}}, {1, {0x91, 64, 64}}, {2, {0x81, 60, 0}}});
    play(performer, {{5, {0xB1, 120, 0}}});
    EXPECT_THAT(seen().back(), IsAt(kBlock + 5, Bytes{0x81, 64, 0}));
    EXPECT_EQ(seen().size(), 4U);
}

// The programmed instrument's levels: Low 0.125, High 0.5.
TEST(Performer, ProgramChangeTakesTheProgramOfTheMapFromItsSampleOn) {
    const PluginLibrary library(testPlugin("programmed"));
    HostedPlugin plugin(library, {kRate, kBlock});
    const Song song = emptySong();
    const Transport transport(song, kRate);
    ProgramMap programs = noPrograms();
    programs[7] = 1;
    Performer performer(plugin, transport, {.programs = programs});
    const auto samples = play(performer, {{3, {0x90, 60, 64}},
                                          {5, {0xC0, 7}},
                                          {6, {0x90, 60, 64}},
                                          {7, {0xC0, 8}},
                                          {8, {0x90, 60, 64}}});
    EXPECT_EQ(samples[3], 0.125F);
    EXPECT_EQ(samples[6], 0.5F);
    EXPECT_EQ(samples[8], 0.5F) << "the map has no program 8";
}

class OurInstrument : public ::testing::Test {
protected:
    static constexpr double kSampleRate = 44100.0;
    static constexpr int kFrames = 4096;
    static constexpr int kRelease = 21; // the parameter; 1 is two seconds

    static bool isHeard(const std::vector<float>& samples, int start, int end) {
        return std::any_of(samples.begin() + start, samples.begin() + end,
                           [](float x) { return x != 0.0F; });
    }
    // From sample 1990 on: what a new instance plays for a note at sample 2000.
    void expectTheLastNoteAlone(const std::vector<float>& samples) const {
        HostedPlugin fresh(library_, {kSampleRate, kFrames});
        Performer alone(fresh, transport_, {});
        alone.setParameter(kRelease, 1.0F);
        const auto expected = play(alone, {{2000, {0x90, 72, 100}}}, kFrames);
        EXPECT_TRUE(std::equal(samples.begin() + 1990, samples.end(), expected.begin() + 1990));
    }

    const PluginLibrary library_{TEST_INSTRUMENT};
    HostedPlugin plugin_{library_, {kSampleRate, kFrames}};
    HostedPlugin spare_{library_, {kSampleRate, kFrames}};
    const Song song_ = emptySong();
    const Transport transport_{song_, kSampleRate};
};

TEST_F(OurInstrument, AllSoundOffLeavesSilenceAndAnInstrumentThatIsAsNew) {
    Performer performer(plugin_, transport_, {.spare = &spare_});
    performer.setParameter(kRelease, 1.0F);
    const auto stopped = play(performer,
                              {{0, {0x90, 60, 100}},
                               {50, {0x90, 67, 100}},
                               {60, {0x80, 60, 0}},
                               {1000, {0xB0, 120, 0}},
                               {2000, {0x90, 72, 100}}},
                              kFrames);
    EXPECT_TRUE(isHeard(stopped, 900, 1000));
    EXPECT_FALSE(isHeard(stopped, 1000, 1990));
    expectTheLastNoteAlone(stopped);
}

// The instance that is heard again still had the release of its first note.
TEST_F(OurInstrument, SecondAllSoundOffBringsNothingOfTheFirstSoundBack) {
    Performer performer(plugin_, transport_, {.spare = &spare_});
    performer.setParameter(kRelease, 1.0F);
    const auto stopped = play(performer,
                              {{0, {0x90, 60, 100}},
                               {500, {0xB0, 120, 0}},
                               {700, {0x90, 67, 100}},
                               {1000, {0xB0, 120, 0}},
                               {2000, {0x90, 72, 100}}},
                              kFrames);
    EXPECT_TRUE(isHeard(stopped, 400, 500));
    EXPECT_TRUE(isHeard(stopped, 900, 1000));
    EXPECT_FALSE(isHeard(stopped, 1000, 1990));
    expectTheLastNoteAlone(stopped);
}

// A sixth of the way by an octave is a whole tone: 2 / 12 * 4096 is 683 to the nearest step.
TEST_F(OurInstrument, BendsByTwoSemitonesWithoutARequest) {
    Performer performer(plugin_, transport_, {});
    const auto bent = play(performer, {{0, {0xE0, 0, 96}}, {1, {0x90, 60, 100}}}, kFrames);
    Performer raw(spare_, transport_, {.isRaw = true});
    const int place = 8192 + 683;
    const auto expected = play(
        raw,
        {{0,
          {0xE0, static_cast<std::uint8_t>(place % 128), static_cast<std::uint8_t>(place / 128)}},
         {1, {0x90, 60, 100}}},
        kFrames);
    EXPECT_TRUE(bent == expected);
    EXPECT_TRUE(std::any_of(bent.begin(), bent.end(), [](float x) { return x != 0.0F; }));
}

} // namespace
} // namespace zelvatone
