#include "host/midi/EndlessNotes.h"

#include "tests/support/MidiFileBuilder.h"

#include <gtest/gtest.h>

#include <array>

namespace zelvatone {
namespace {

int countOf(const std::vector<std::array<std::uint8_t, 3>>& messages) {
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), 1.0, {}, {}};
    for (const auto& message : messages) {
        song.add(0.0, message);
    }
    return endlessNotes(song);
}

TEST(EndlessNotes, AreThoseWithoutANoteOff) {
    EXPECT_EQ(countOf({}), 0);
    EXPECT_EQ(countOf({{0x90, 60, 64}, {0x80, 60, 0}, {0x90, 62, 64}, {0x90, 62, 0}}), 0);
    EXPECT_EQ(countOf({{0x90, 60, 64}, {0x91, 60, 64}, {0x81, 60, 0}, {0x90, 64, 1}}), 2);
    EXPECT_EQ(countOf({{0x90, 60, 64}, {0x90, 60, 64}}), 1);
}

TEST(EndlessNotes, EndWithAllThatSoundsOnTheirChannel) {
    for (const std::uint8_t controller : std::array<std::uint8_t, 3>{120, 123, 126}) {
        EXPECT_EQ(countOf({{0x90, 60, 64}, {0x91, 60, 64}, {0xB0, controller, 0}}), 1);
    }
    EXPECT_EQ(countOf({{0x90, 60, 64}, {0xB0, 121, 0}, {0xB0, 7, 0}}), 1);
}

TEST(EndlessNotes, AreThoseThatAPedalHolds) {
    EXPECT_EQ(countOf({{0xB0, 64, 127}, {0x90, 60, 64}, {0x80, 60, 0}}), 1);
    EXPECT_EQ(countOf({{0xB0, 64, 127}, {0x90, 60, 64}, {0x80, 60, 0}, {0xB0, 64, 0}}), 0);
}

TEST(EndlessNotes, AreOfTheEventsThatArePlayed) {
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), 1.0, {}, {}};
    song.add(0.0, Bytes{0x90, 60, 64});
    song.add(0.0, Bytes{0x99, 36, 64});
    const auto isPlayed = [](const SongEvent& event) { return event.bytes[0] == 0x90; };
    EXPECT_EQ(endlessNotes(song, isPlayed), 1);
}

} // namespace
} // namespace zelvatone
