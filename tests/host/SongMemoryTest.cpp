// A large MIDI file takes memory in proportion to its size, whatever it is full of.
#include "host/midi/Song.h"
#include "host/render/BlockEvents.h"
#include "tests/host/AllocationCount.h"
#include "tests/support/MidiFileBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zelvatone {
namespace {

struct Filling {
    std::string name;
    Bytes first;  // with its delta time of 0
    Bytes second; // repeated, each a tick later
};

// As many as two megabytes hold: a second has 960 ticks, so a block has few of them.
Bytes fileOf(const Filling& filling) {
    constexpr std::size_t kFileSize = 2U << 20U;
    TrackBytes track;
    track.append(filling.first);
    while (track.bytes().size() < kFileSize) {
        track.append(filling.second);
    }
    return midiFileBytes(0, 480, {track.end(0)});
}

class SongMemory : public ::testing::TestWithParam<Filling> {};

TEST_P(SongMemory, IsAtMostTwelveTimesTheFile) {
    constexpr std::size_t kMost = 12;
    constexpr int kParts = 17; // one a channel and one for the rest
    const TemporaryFolder folder;
    writeBytes(folder / "song.mid", fileOf(GetParam()));
    const AllocationPeak peak;
    const Song song = readSong(folder / "song.mid");
    std::vector<std::unique_ptr<EventRecords>> parts;
    parts.reserve(kParts);
    for (int part = 0; part < kParts; ++part) {
        const BlockEvents events(scheduleEvents(song, 44100.0), 512);
        parts.push_back(std::make_unique<EventRecords>(events.most()));
    }
    const std::size_t size = std::filesystem::file_size(folder / "song.mid");
    EXPECT_LE(peak.bytes(), kMost * size);
}

INSTANTIATE_TEST_SUITE_P(
    , SongMemory,
    ::testing::Values(Filling{"Pressure", {0, 0xD0, 1}, {1, 1}}, // by running status
                      Filling{"Notes", {0, 0x90, 60, 1}, {1, 60, 1}},
                      Filling{"SystemMessages", {}, {1, 0xF7, 1, 0xF6}},
                      Filling{"Exclusives", {}, {1, 0xF0, 1, 0xF7}},
                      Filling{"LongExclusive",
                              {0, 0xF0, 0x81, 0x80, 0x80, 0x00}, // of two megabytes
                              Bytes(1U << 16U, 0xF7)},
                      Filling{"Tempos", {}, {1, 0xFF, 0x51, 3, 0x07, 0xA1, 0x20}},
                      Filling{"Meters", {}, {1, 0xFF, 0x58, 4, 6, 3, 24, 8}},
                      Filling{"Texts", {}, {1, 0xFF, 0x01, 0}}),
    [](const auto& filling) { return filling.param.name; });

} // namespace
} // namespace zelvatone
