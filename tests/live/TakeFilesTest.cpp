#include "live/take/TakeFiles.h"

#include "host/midi/MidiFileReader.h"
#include "host/midi/Song.h"
#include "host/render/Automation.h"
#include "host/render/EventSchedule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

constexpr int kRate = 48000;

TakeEvent message(std::int64_t frame, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) {
    return {.frame = frame,
            .parameter = kNoParameter,
            .value = 0.0F,
            .status = status,
            .data1 = data1,
            .data2 = data2};
}

TakeEvent move(std::int64_t frame, std::int32_t parameter, float value) {
    return {.frame = frame,
            .parameter = parameter,
            .value = value,
            .status = 0,
            .data1 = 0,
            .data2 = 0};
}

Song readBack(const std::vector<TakeEvent>& events, std::int64_t frames, const TakeClock& clock) {
    return makeSong(parseMidiFile(takeMidi(events, frames, clock)));
}

std::vector<std::int64_t> framesOf(const Song& song) {
    std::vector<std::int64_t> frames;
    for (auto schedule = scheduleEvents(song, kRate); !schedule.atEnd(); schedule.advance()) {
        frames.push_back(schedule.frame());
    }
    return frames;
}

// A delta of 16385 and one of 300000 take three bytes, 127 and 128 one and two.
TEST(TakeMidi, PlaysEveryMessageAtItsSampleAndInItsOrder) {
    const TakeClock clock(TempoMap(1.0, {}), kRate);
    const Song song = readBack({message(0, 0x90, 60, 100), message(127, 0x80, 60, 0),
                                message(255, 0xC0, 7, 99), message(255, 0xE0, 1, 64),
                                message(16640, 0xD0, 5, 0), message(316640, 0xB0, 64, 127)},
                               400000, clock);
    EXPECT_THAT(framesOf(song), ElementsAre(0, 127, 255, 255, 16640, 316640));
    EXPECT_THAT(song.message(song.events[2]), ElementsAre(0xC0, 7));
    EXPECT_THAT(song.message(song.events[3]), ElementsAre(0xE0, 1, 64));
    EXPECT_EQ(frameAt(song.seconds, kRate), 400000);
    EXPECT_EQ(song.tempo.tempoAtSeconds(1.0), 120.0);
}

// 2^28 ticks are more than a delta can say: an hour and a half.
TEST(TakeMidi, BridgesAPauseOfHours) {
    const TakeClock clock(TempoMap(1.0, {}), kRate);
    const std::int64_t late = 1000000000;
    EXPECT_THAT(framesOf(readBack({message(late, 0x90, 60, 1)}, late + 1, clock)),
                ElementsAre(late));
}

TEST(TakeMidi, KeepsTheTempoOfTheSongThatWasPlayedAlong) {
    const TempoMap tempo(480.0, {{0, 0.6}, {960, 0.4}});
    const TakeClock clock(tempo, kRate);
    const std::int64_t frame = clock.nextFrame(70000);
    const Song song = readBack({message(frame, 0x90, 60, 1)}, 100000, clock);
    EXPECT_THAT(framesOf(song), ElementsAre(frame));
    for (const double seconds : {0.0, 1.1999, 1.2, 2.0}) {
        EXPECT_EQ(song.tempo.tempoAtSeconds(seconds), tempo.tempoAtSeconds(seconds)) << seconds;
    }
}

// 0.1F, the float below 1 and the smallest one above 0 lie between decimals.
TEST(TakeAutomation, ReadsBackAsTheSameMoves) {
    const std::vector<std::string> names{"Attack", "Decay"};
    const std::vector<TakeEvent> events{move(0, 1, 0.1F), message(5, 0x90, 60, 1),
                                        move(44032, 0, 0x1.fffffep-1F),
                                        move(100000000 * 256LL % 4000000000LL, 1, 1e-45F)};
    const std::string text = takeAutomation(events, names, 44100, "zelvatone render x");
    EXPECT_THAT(text, StartsWith("# zelvatone render x\n# parameter 1: Decay\n"));
    const auto schedule = scheduleMoves(parseAutomation(text, names), 44100.0);
    ASSERT_EQ(schedule.size(), 3U);
    EXPECT_EQ(schedule[0].frame, 0);
    EXPECT_EQ(schedule[0].parameter, 1);
    EXPECT_EQ(schedule[0].value, 0.1F);
    EXPECT_EQ(schedule[1].frame, 44032);
    EXPECT_EQ(schedule[1].value, 0x1.fffffep-1F);
    EXPECT_EQ(schedule[2].frame, 100000000 * 256LL % 4000000000LL);
    EXPECT_EQ(schedule[2].value, 1e-45F);
}

} // namespace
} // namespace zelvatone
