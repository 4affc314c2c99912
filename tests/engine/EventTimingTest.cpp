// From which sample on a note is heard.
#include "tests/engine/EngineFixture.h"
#include "tests/engine/RecordingEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace zelvatone {
namespace {

using test::EngineTest;
using test::Happening;
using test::RecordingEngine;
using ::testing::ElementsAre;

constexpr std::int32_t kSilent = -1;

class EventTiming : public EngineTest {
protected:
    // A square is loud from its very first sample, where a sine is still at zero.
    void SetUp() override { set(kWave, 1.0F); }

    static std::int32_t firstSound(const std::vector<float>& samples) {
        for (std::size_t n = 0; n < samples.size(); ++n) {
            if (samples[n] != 0.0F) {
                return static_cast<std::int32_t>(n);
            }
        }
        return kSilent;
    }
    static std::int32_t firstSoundOfNoteAt(std::int32_t deltaFrames) {
        ZelvatoneEngine fresh;
        test::knob(fresh, kWave).setValue(1.0F);
        fresh.processMidi(0x90, 60, 127, deltaFrames);
        return firstSound(test::renderBlock(fresh, 64));
    }
};

TEST_F(EventTiming, OffsetsZeroAndOneSoundFromTheFirstSampleAndFiveFromTheFifth) {
    EXPECT_EQ(firstSoundOfNoteAt(0), 0);
    EXPECT_EQ(firstSoundOfNoteAt(1), 0);
    EXPECT_EQ(firstSoundOfNoteAt(2), 1);
    EXPECT_EQ(firstSoundOfNoteAt(5), 4);
}

TEST_F(EventTiming, OffsetsReachTheBlocksLastSampleWhenTheyPointAfterIt) {
    EXPECT_EQ(firstSoundOfNoteAt(63), 62);
    EXPECT_EQ(firstSoundOfNoteAt(64), 63);
    EXPECT_EQ(firstSoundOfNoteAt(65), kSilent);
}

TEST_F(EventTiming, OffsetsOutsideTheBlockAreTakenAsTheyAre) {
    EXPECT_EQ(firstSoundOfNoteAt(-1), 0);
    EXPECT_EQ(firstSoundOfNoteAt(-1000000), 0);
    EXPECT_EQ(firstSoundOfNoteAt(std::numeric_limits<std::int32_t>::max()), kSilent);
    EXPECT_EQ(firstSoundOfNoteAt(std::numeric_limits<std::int32_t>::min()), kSilent);
}

TEST_F(EventTiming, OffsetsAfterTheEndOfTheBlockGoOnInTheNextOne) {
    engine_.processMidi(0x90, 60, 127, 70);
    EXPECT_EQ(firstSound(render(32)), kSilent);
    EXPECT_EQ(firstSound(render(32)), kSilent);
    EXPECT_EQ(firstSound(render(32)), 5); // sample 69
}

TEST_F(EventTiming, BlocksWithoutSamplesConsumeNothing) {
    engine_.processMidi(0x90, 60, 127, 3);
    engine_.render(nullptr, nullptr, 0);
    engine_.render(nullptr, nullptr, -64);
    EXPECT_EQ(firstSound(render(8)), 2);
}

TEST_F(EventTiming, ChordAtOneOffsetIsSpreadOverSamples) {
    for (const std::int32_t note : {60, 64, 67}) {
        engine_.processMidi(0x90, note, 127, 0);
    }
    render(1);
    EXPECT_EQ(test::slotsAt(engine_, kFreeSlot), 30); // two of three
    render(1);
    EXPECT_EQ(test::slotsAt(engine_, kFreeSlot), 29);
}

TEST_F(EventTiming, LastEventOfACrowdIsASampleLate) {
    // At sample 9 the first one is applied and the second counts on; the pass ends before the
    // third, which thus misses one count and acts at its offset instead of a sample early.
    RecordingEngine recorder;
    recorder.queueNoteOff(1, 10);
    recorder.queueNoteOff(2, 100);
    recorder.queueNoteOff(3, 200);
    recorder.renderSamples(300);
    EXPECT_THAT(recorder.log, ElementsAre(Happening{9, "off 1"}, Happening{99, "off 2"},
                                          Happening{200, "off 3"}));
}

TEST_F(EventTiming, EventFillingTheRingStillActs) {
    for (std::int32_t i = 0; i < 255; ++i) {
        engine_.queueNoteOff(1, 1000);
    }
    engine_.processMidi(0x90, 60, 127, 0);
    EXPECT_EQ(engine_.events.free(), 0);
    EXPECT_EQ(firstSound(render(4)), 0);
}

// Where notes sound when a host cuts the same performance into blocks of different sizes.
class BlockCutting : public EventTiming {
protected:
    // One note at absolute sample `at`, handed over in its block with its offset there.
    static std::vector<float> performed(std::int32_t at, std::int32_t blockSize) {
        ZelvatoneEngine fresh;
        test::knob(fresh, kWave).setValue(1.0F);
        std::vector<float> all;
        for (std::int32_t begin = 0; begin < 8192; begin += blockSize) {
            if (begin <= at && at < begin + blockSize) {
                fresh.processMidi(0x90, 60, 127, at - begin);
            }
            const std::vector<float> block = test::renderBlock(fresh, blockSize);
            all.insert(all.end(), block.begin(), block.end());
        }
        all.resize(8192);
        return all;
    }
};

TEST_F(BlockCutting, PlaysANoteASampleEarlyUnlessItIsTheFirstOfItsBlock) {
    // 4608 = 9 x 512 = 72 x 64 begins a block of 1, 64 and 512, and of no other size here.
    EXPECT_EQ(firstSound(performed(4608, 1)), 4608);
    EXPECT_EQ(firstSound(performed(4608, 64)), 4608);
    EXPECT_EQ(firstSound(performed(4608, 441)), 4607);
    EXPECT_EQ(firstSound(performed(4608, 512)), 4608);
    EXPECT_EQ(firstSound(performed(4608, 4096)), 4607);
}

TEST_F(BlockCutting, ChangesNothingButThatOneSample) {
    const std::vector<float> early = performed(4608, 4096);
    const std::vector<float> late = performed(4608, 512);
    const std::vector<float> shifted(early.begin(), early.end() - 1);
    EXPECT_EQ(test::bitsOf({late.begin() + 1, late.end()}), test::bitsOf(shifted));
}

TEST_F(BlockCutting, SeparatesEventsThatWouldHoldEachOtherUp) {
    RecordingEngine together;
    together.queueNoteOff(1, 10);
    together.queueNoteOff(2, 100);
    together.renderSamples(128);
    EXPECT_THAT(together.log, ElementsAre(Happening{9, "off 1"}, Happening{100, "off 2"}));
    RecordingEngine apart;
    apart.queueNoteOff(1, 10);
    apart.renderSamples(64);
    apart.queueNoteOff(2, 100 - 64);
    apart.renderSamples(64);
    EXPECT_THAT(apart.log, ElementsAre(Happening{9, "off 1"}, Happening{99, "off 2"}));
}

} // namespace
} // namespace zelvatone
