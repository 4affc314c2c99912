#include "host/midi/MidiFileReader.h"

#include "host/Error.h"
#include "host/midi/MidiTrackParser.h"
#include "tests/support/MidiFileBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Event {
    std::int64_t tick;
    Bytes bytes;
};

std::vector<Event> eventsOf(const MidiTrack& track) {
    std::vector<Event> events;
    for (MidiTrackParser parser(track.bytes, track.number); parser.next();) {
        events.push_back({parser.tick(), Bytes(parser.message().begin(), parser.message().end())});
    }
    return events;
}

// Of a file with this one track.
std::vector<Event> parseTrack(const TrackBytes& track) {
    const MidiFile file = parseMidiFile(midiFileBytes(0, 480, {track}));
    return eventsOf(file.tracks.at(0));
}

std::string refusal(const Bytes& bytes) {
    try {
        parseMidiFile(bytes);
    } catch (const InputError& error) {
        return error.what();
    }
    return "accepted";
}

// Of the first of two tracks: the last one may be cut short.
std::string refusalOfTrack(const TrackBytes& track) {
    return refusal(midiFileBytes(1, 480, {track, TrackBytes().end(0)}));
}

TEST(MidiFileReader, ReadsMessagesAtTheirTicks) {
    const auto events = parseTrack(
        TrackBytes().event(0, {0x90, 60, 100}).event(200, {0x80, 60, 0}).event(20000, {0xC3, 5}));
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(events[0].tick, 0);
    EXPECT_THAT(events[0].bytes, ElementsAre(0x90, 60, 100));
    EXPECT_EQ(events[1].tick, 200);
    EXPECT_EQ(events[2].tick, 20200);
    EXPECT_THAT(events[2].bytes, ElementsAre(0xC3, 5));
}

TEST(MidiFileReader, FillsInRunningStatus) {
    const auto events = parseTrack(TrackBytes().event(0, {0x95, 60, 1}).event(1, {61, 2}));
    EXPECT_THAT(events.at(1).bytes, ElementsAre(0x95, 61, 2));
}

TEST(MidiFileReader, KeepsRunningStatusAcrossMetaEvents) {
    const auto events = parseTrack(
        TrackBytes().event(0, {0x95, 60, 1}).event(0, {0xFF, 1, 1, 'x'}).event(1, {61, 2}));
    EXPECT_THAT(events.at(2).bytes, ElementsAre(0x95, 61, 2));
}

TEST(MidiFileReader, ReadsAWholeExclusiveMessage) {
    const auto events = parseTrack(TrackBytes().event(3, {0xF0, 3, 0x43, 0x12, 0xF7}));
    EXPECT_THAT(events.at(0).bytes, ElementsAre(0xF0, 0x43, 0x12, 0xF7));
}

TEST(MidiFileReader, JoinsAnExclusiveMessageThatComesInPackets) {
    const auto events = parseTrack(TrackBytes()
                                       .event(3, {0xF0, 2, 0x43, 0x12})
                                       .event(4, {0xF7, 1, 0x55})
                                       .event(5, {0xF7, 2, 0x56, 0xF7}));
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].tick, 12);
    EXPECT_THAT(events[0].bytes, ElementsAre(0xF0, 0x43, 0x12, 0x55, 0x56, 0xF7));
}

TEST(MidiFileReader, TakesEscapedBytesThatAreAMessageAndDropsOthers) {
    const auto events = parseTrack(TrackBytes()
                                       .event(0, {0xF7, 2, 0xF3, 1})  // song select
                                       .event(0, {0xF7, 1, 0xFF})     // a reset
                                       .event(0, {0xF7, 2, 0x90, 60}) // half a note
                                       .event(0, {0xF7, 3, 0x90, 60, 1}));
    ASSERT_EQ(events.size(), 2U);
    EXPECT_THAT(events[0].bytes, ElementsAre(0xF3, 1));
    EXPECT_THAT(events[1].bytes, ElementsAre(0x90, 60, 1));
}

TEST(MidiFileReader, EndsATrackWhereItSaysSo) {
    const auto file =
        parseMidiFile(midiFileBytes(0, 480, {TrackBytes().noteOn(0, 60).end(960).noteOn(0, 61)}));
    EXPECT_EQ(eventsOf(file.tracks.at(0)).size(), 1U);
    EXPECT_EQ(file.tracks.at(0).endTick, 960);
}

TEST(MidiFileReader, AcceptsATrackThatDoesNotSayWhereItEnds) {
    EXPECT_EQ(parseTrack(TrackBytes().noteOn(0, 60)).size(), 1U);
}

TEST(MidiFileReader, SkipsUnknownChunks) {
    Bytes bytes = midiFileBytes(0, 480, {TrackBytes().noteOn(0, 60)});
    const Bytes unknown{'X', 'y', 'z', '!', 0, 0, 0, 2, 0xAA, 0xBB};
    bytes.insert(bytes.begin() + 14, unknown.begin(), unknown.end());
    EXPECT_EQ(parseMidiFile(bytes).tracks.size(), 1U);
}

TEST(MidiFileReader, CountsTicksOfFilmFrames) {
    // 25 frames a second of 40 ticks: milliseconds.
    const auto file = parseMidiFile(midiFileBytes(1, ((256 - 25) << 8) | 40, {TrackBytes()}));
    EXPECT_EQ(file.division.ticksPerQuarter, 0);
    EXPECT_DOUBLE_EQ(file.division.ticksPerSecond, 1000.0);
    const auto drop = parseMidiFile(midiFileBytes(1, ((256 - 29) << 8) | 100, {TrackBytes()}));
    EXPECT_NEAR(drop.division.ticksPerSecond, 2997.003, 0.001);
}

TEST(MidiFileReader, SaysWhatIsWrongWithAHeader) {
    const TrackBytes track;
    EXPECT_EQ(refusal({}), "not a MIDI file");
    EXPECT_EQ(refusal({'R', 'I', 'F', 'F', 0, 0, 0, 0}), "not a MIDI file");
    EXPECT_EQ(refusal({'M', 'T', 'h', 'd', 0, 0, 0, 6, 0}), "the file is cut short");
    EXPECT_THAT(refusal(midiFileBytes(2, 480, {track})), HasSubstr("format 2"));
    EXPECT_THAT(refusal(midiFileBytes(7, 480, {track})), HasSubstr("format 7"));
    EXPECT_THAT(refusal(midiFileBytes(0, 0, {track})), HasSubstr("no ticks"));
    EXPECT_THAT(refusal(midiFileBytes(0, (256 - 77) << 8 | 4, {track})), HasSubstr("film frames"));
    EXPECT_THAT(refusal(midiFileBytes(0, 480, {})), HasSubstr("no tracks"));
}

TEST(MidiFileReader, SaysWhichTrackIsMissing) {
    Bytes bytes = midiFileBytes(1, 480, {TrackBytes().end(0)});
    bytes[11] = 3;
    EXPECT_EQ(refusal(bytes), "the file is cut short: 3 tracks announced, 1 found");
}

TEST(MidiFileReader, SaysWhatIsWrongWithATrack) {
    EXPECT_EQ(refusalOfTrack(TrackBytes().event(0, {0x90, 60})), "track 1 is cut short");
    EXPECT_EQ(refusalOfTrack(TrackBytes().event(0, {60, 61})),
              "track 1 is damaged: data without a status");
    EXPECT_EQ(refusalOfTrack(TrackBytes().event(0, {0x90, 60, 0x90})),
              "track 1 is damaged: a status where data belongs");
    EXPECT_EQ(refusalOfTrack(TrackBytes().event(0, {0xF8})),
              "track 1 is damaged: a system message that no track can hold");
    EXPECT_EQ(refusalOfTrack(TrackBytes().event(0, {0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F})),
              "track 1 is damaged: a number of more than four bytes");
    EXPECT_EQ(refusalOfTrack(TrackBytes().event(0, {0xFF, 1, 100, 'x'})), "track 1 is cut short");
}

Bytes richFile() {
    return midiFileBytes(1, 96,
                         {TrackBytes().tempo(0, 400000).event(9, {0xFF, 0x58, 4, 6, 3, 24, 8}),
                          TrackBytes()
                              .noteOn(0, 60)
                              .event(200, {61, 62})
                              .event(3, {0xF0, 3, 1, 2, 0xF7})
                              .event(1, {0xF7, 1, 0xF6})
                              .end(70)});
}

TEST(MidiFileReader, RefusesEveryFileThatIsCutShortBeforeItsLastTrack) {
    const Bytes whole = richFile();
    constexpr std::size_t kLastTrack = 22; // bytes of its events
    const std::size_t lastTrack = whole.size() - kLastTrack;
    ASSERT_EQ(whole[lastTrack - 1], kLastTrack);
    for (std::size_t length = 0; length < lastTrack; ++length) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(refusal(part), "accepted") << length << " bytes of " << whole.size();
    }
    EXPECT_EQ(refusal(whole), "accepted");
}

TrackBytes threeNotes() {
    return TrackBytes().noteOn(10, 60).noteOn(10, 61).noteOn(10, 62).end(70);
}

// A file whose last track has three notes, but says that it has `length` bytes.
MidiFile fileWithLength(std::size_t length) {
    Bytes bytes = midiFileBytes(1, 96, {TrackBytes().end(0), threeNotes()});
    bytes[bytes.size() - threeNotes().bytes().size() - 1] = static_cast<std::uint8_t>(length);
    return parseMidiFile(bytes);
}

TEST(MidiFileReader, PlaysALastTrackWhoseLengthIsWrongUpToItsEndMark) {
    const std::size_t right = threeNotes().bytes().size();
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, right - 4, right - 1}) {
        const MidiFile file = fileWithLength(length);
        EXPECT_EQ(eventsOf(file.tracks.at(1)).size(), 3U) << length;
        EXPECT_EQ(file.tracks.at(1).endTick, 100) << length;
        EXPECT_EQ(file.warning, "the length of track 2 is wrong; what is there is played")
            << length;
    }
    EXPECT_EQ(fileWithLength(right).warning, "");
    EXPECT_EQ(eventsOf(fileWithLength(100).tracks.at(1)).size(), 3U);
}

TEST(MidiFileReader, LeavesAChunkAfterALastTrackWithoutAnEndAlone) {
    Bytes bytes = midiFileBytes(0, 96, {TrackBytes().noteOn(0, 60)});
    const Bytes chunk{'A', 'A', 'A', 'A', 0, 0, 0, 4, 1, 2, 3, 4}; // would read as notes
    bytes.insert(bytes.end(), chunk.begin(), chunk.end());
    const MidiFile file = parseMidiFile(bytes);
    EXPECT_EQ(eventsOf(file.tracks.at(0)).size(), 1U);
    EXPECT_EQ(file.warning, "");
}

TEST(MidiFileReader, PlaysTheWholeMessagesOfALastTrackThatIsCutShort) {
    Bytes bytes = midiFileBytes(0, 96, {threeNotes()});
    bytes.resize(bytes.size() - 5); // the end mark and the velocity of the last note
    const MidiFile file = parseMidiFile(bytes);
    EXPECT_EQ(eventsOf(file.tracks.at(0)).size(), 2U);
    EXPECT_EQ(file.tracks.at(0).endTick, 20);
    EXPECT_THAT(file.warning, HasSubstr("length of track 1"));
}

// A chunk before the data, of an odd size, which is padded.
Bytes riffOf(const Bytes& midi) {
    Bytes bytes{'R', 'I', 'F', 'F', 0,   0, 0, 0, 'R', 'M', 'I',
                'D', 'D', 'I', 'S', 'P', 1, 0, 0, 0,   7,   0};
    const Bytes head{'d', 'a', 't', 'a', static_cast<std::uint8_t>(midi.size()), 0, 0, 0};
    bytes.insert(bytes.end(), head.begin(), head.end());
    bytes.insert(bytes.end(), midi.begin(), midi.end());
    return bytes;
}

TEST(MidiFileReader, FindsTheFileInsideARiffFile) {
    const MidiFile file = parseMidiFile(riffOf(midiFileBytes(0, 96, {threeNotes()})));
    EXPECT_EQ(eventsOf(file.tracks.at(0)).size(), 3U);
    EXPECT_EQ(file.warning, "");
    EXPECT_EQ(refusal(riffOf({1, 2, 3, 4})), "not a MIDI file");
    Bytes empty = riffOf({});
    empty.resize(empty.size() - 8);
    EXPECT_EQ(refusal(empty), "a RIFF file without MIDI data");
}

// The sanitizers watch: whatever stands in the file, it is read within its bounds or refused.
TEST(MidiFileReader, SurvivesDamageAnywhere) {
    const Bytes whole = richFile();
    std::mt19937 random(1); // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp): repeatable
    for (int round = 0; round < 20000; ++round) {
        Bytes damaged = whole;
        for (int i = 0; i < 3; ++i) {
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        }
        EXPECT_THAT(refusal(damaged), ::testing::Not(IsEmpty()));
    }
}

TEST(MidiFileReader, NamesTheFileInItsErrors) {
    const TemporaryFolder folder;
    writeText(folder / "song.mid", "no song");
    const auto path = folder / "song.mid";
    try {
        readMidiFile(path);
        FAIL() << "accepted";
    } catch (const InputError& error) {
        EXPECT_EQ(std::string(error.what()), path.string() + ": not a MIDI file");
    }
}

} // namespace
} // namespace zelvatone
