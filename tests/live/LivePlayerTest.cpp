#include "live/player/LivePlayer.h"

#include "tests/live/TakeSession.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace zelvatone {
namespace {

// The first sample at which two sounds differ in a bit; none below 0.
std::ptrdiff_t firstDifference(const std::vector<float>& a, const std::vector<float>& b) {
    const auto equal = [](float x, float y) {
        return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
    };
    const auto [end, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), equal);
    return end == a.end() && other == b.end() ? -1 : end - a.begin();
}

void expectTheSameAgain(const SessionPlan& plan, const Song& song) {
    const Take take = playAtRandom(TEST_INSTRUMENT, plan, song);
    EXPECT_GT(*std::max_element(take.sound.begin(), take.sound.end()), 0.01F);
    EXPECT_EQ(firstDifference(take.sound, renderAgain(TEST_INSTRUMENT, plan, take, song)), -1)
        << "seed " << plan.seed;
}

class Recording : public ::testing::TestWithParam<SessionPlan> {};

TEST_P(Recording, RendersToTheSameSamples) {
    expectTheSameAgain(GetParam(), songWithoutEvents());
}

INSTANTIATE_TEST_SUITE_P(
    RandomSessions, Recording,
    ::testing::Values(SessionPlan{.rate = 48000, .blockSize = 256, .seed = 1},
                      SessionPlan{.rate = 44100, .blockSize = 64, .seed = 2},
                      SessionPlan{.rate = 96000, .blockSize = 512, .seed = 3},
                      SessionPlan{.rate = 48000, .blockSize = 128, .hasOddBlocks = true, .seed = 4},
                      SessionPlan{.rate = 44100, .blockSize = 1000, .seed = 5}));

// A tempo of 77 a minute has no tick on most samples.
TEST(RecordingWithASong, RendersToTheSameSamples) {
    Song song{{}, TempoMap(96.0, {{0, 60.0 / 77.0}, {96, 0.41}}), MeterMap({}), 2.0, {}, {}};
    for (int i = 0; i < 12; ++i) {
        const auto note = static_cast<std::uint8_t>(48 + i);
        song.add(song.tempo.secondsAtTick(10 * i), std::vector<std::uint8_t>{0x93, note, 90});
        song.add(song.tempo.secondsAtTick(10 * i + 10), std::vector<std::uint8_t>{0x83, note, 0});
    }
    // Tempos of a file are whole microseconds.
    song.tempo = TempoMap(96.0, {{0, 0.779221}, {96, 0.41}});
    expectTheSameAgain({.rate = 48000, .blockSize = 256, .seed = 6}, song);
}

// An instrument that puts out velocity / 128 on the left and note / 128 on the right at a note's
// sample.
class LivePulses : public ::testing::Test {
protected:
    static constexpr int kBlock = 64;

    void play(int frames, const std::vector<MidiMessage>& messages) {
        left.assign(static_cast<std::size_t>(frames), -1.0F);
        right = left;
        player.process(left.data(), right.data(), frames, messages);
    }
    // Where the left is not silent.
    std::vector<int> pulses() const {
        std::vector<int> frames;
        for (std::size_t i = 0; i < left.size(); ++i) {
            if (left[i] != 0.0F) {
                frames.push_back(static_cast<int>(i));
            }
        }
        return frames;
    }
    static MidiMessage note(int frame, int number = 64) {
        return {.frame = frame,
                .status = kNoteOnStatus,
                .data1 = static_cast<std::uint8_t>(number),
                .data2 = 32};
    }

    const PluginLibrary library{testPlugin("pulse")};
    HostedPlugin plugin{library, {48000.0, kBlock}};
    const Song song = songWithoutEvents();
    LivePlayer player{{.plugin = &plugin, .song = &song}};
    std::vector<float> left;
    std::vector<float> right;
};

TEST_F(LivePulses, SoundAtTheSampleOfTheirMessage) {
    play(2 * kBlock, {note(0), note(63), note(64), note(100)});
    EXPECT_THAT(pulses(), ::testing::ElementsAre(0, 63, 64, 100));
    EXPECT_EQ(left[63], 0.25F);
    EXPECT_EQ(right[63], 0.5F);
}

// Every note waits equally long: a block less a sample.
TEST_F(LivePulses, KeepTheirDistanceInBlocksOfAnotherSize) {
    std::vector<int> found;
    int start = 0;
    for (const int frames : {50, 50, 50, 50}) {
        play(frames, {note(10)});
        for (const int frame : pulses()) {
            found.push_back(start + frame);
        }
        start += frames;
    }
    EXPECT_THAT(found, ::testing::ElementsAre(73, 123, 173));
}

TEST_F(LivePulses, SoundFromTheUsersThreadAtTheNextBlock) {
    player.send({.kind = LiveCommand::Kind::kMessage, .message = note(0)});
    play(kBlock, {});
    EXPECT_THAT(pulses(), ::testing::ElementsAre(0));
}

TEST_F(LivePulses, AreCountedAndMeasured) {
    play(kBlock, {note(0), note(1, 65)});
    const LiveReading reading = player.read();
    EXPECT_EQ(reading.notes, 2);
    EXPECT_EQ(reading.peak, 65.0F / 128.0F);
    EXPECT_GT(reading.load, 0.0F);
    EXPECT_EQ(player.read().peak, 0.0F);
}

TEST_F(LivePulses, MoreNotesThanThereIsRoomForAreCounted) {
    play(kBlock, std::vector<MidiMessage>(10000, note(5)));
    EXPECT_EQ(player.read().droppedMessages, 10000 - 8192);
}

TEST_F(LivePulses, AControllerThatWasLearnedMovesItsParameter) {
    player.send({.kind = LiveCommand::Kind::kMap, .parameter = 0, .controller = 74});
    play(kBlock, {});
    play(kBlock, {{.frame = 30, .status = 0xB5, .data1 = 74, .data2 = 127}});
    LiveNotice notice{};
    ASSERT_TRUE(player.takeNotice(notice));
    EXPECT_EQ(notice.kind, LiveNotice::Kind::kController);
    EXPECT_EQ(notice.number, 74);
    ASSERT_TRUE(player.takeNotice(notice));
    EXPECT_EQ(notice.kind, LiveNotice::Kind::kMove);
    EXPECT_EQ(notice.value, 1.0F);
}

#if defined(__SSE__)
// Some sound systems flush tiny numbers to zero on their threads.
TEST_F(LivePulses, LeaveTheThreadsFloatingPointModeAsItWas) {
    const unsigned int before = _mm_getcsr();
    _mm_setcsr(before | 0x8040U);
    play(kBlock, {note(0)});
    EXPECT_EQ(_mm_getcsr() & 0x8040U, 0x8040U);
    _mm_setcsr(before);
}
#endif

} // namespace
} // namespace zelvatone
