// `zelvatone song`: what a MIDI file holds.

#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

class SongCommand : public ::testing::Test {
protected:
    // Two seconds: a bar of three quarters at 120, and one quarter at 120 of silence. Channel 1
    // bends within two semitones, channel 10 drums and does not end a note.
    SongCommand() {
        writeBytes(
            song_,
            midiFileBytes(
                1, 480,
                {TrackBytes()
                     .event(0, {0xFF, 0x58, 4, 3, 2, 24, 8})
                     .event(0, {0xFF, 0x03, 4, 'T', 'e', 's', 't'})
                     .end(1920),
                 TrackBytes()
                     .event(0, {0xB0, 101, 0})
                     .event(0, {0xB0, 100, 0})
                     .event(0, {0xB0, 6, 24})
                     .event(0, {0xB0, 1, 64})
                     .event(0, {0xC0, 5})
                     .event(0, {0xD0, 90})
                     .event(0, {0xE0, 0, 80})
                     .event(0, {0x90, 60, 64})
                     .event(0, {0x90, 69, 64})
                     .event(480, {0x90, 60, 0})
                     .event(0, {0x80, 69, 0})
                     .event(0, {0xB0, 123, 0})
                     .end(0),
                 TrackBytes().event(0, {0x99, 36, 64}).event(0, {0xF0, 2, 1, 0xF7}).end(480)}));
    }

    std::string outputOf(std::vector<std::string> words) const {
        words.insert(words.begin() + 1, song_.string());
        const auto result = zelvatoneWith(words);
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        return result.output;
    }

    const TemporaryFolder folder_;
    const std::filesystem::path song_ = folder_ / "song.mid";
};

TEST_F(SongCommand, ShowsLengthTracksAndChannels) {
    EXPECT_THAT(outputOf({"song"}),
                HasSubstr("Length  2.000 s\n"
                          "Tempo   120.00 quarter notes a minute\n"
                          "Metre   3/4\n\n"
                          "Track  Notes  Name\n"
                          "    1      0  Test\n"
                          "    2      2\n"
                          "    3      1\n\n"
                          "Channel     Notes  Range     Bends  Programs  Controllers\n"
                          "1               2  C4 to A4      1  5         1, 6, 100, 101, 123\n"
                          "10 (drums)      1  C2 to C2      0\n\n"
                          "Notes that do not end: 1\n"));
}

TEST_F(SongCommand, TellsWhatIsNotPlayedAndWhy) {
    const std::string text = outputOf({"song"});
    EXPECT_THAT(text, HasSubstr("bends of channel 1 beyond 12 semitones: the file asks for 24"));
    EXPECT_THAT(text, HasSubstr("channel 10 (drums): --channel 10=PROGRAM plays it"));
    EXPECT_THAT(text, HasSubstr("controllers 1: the instrument has none of them"));
    EXPECT_THAT(text, HasSubstr("program changes 5: --programs FILE"));
    EXPECT_THAT(text, HasSubstr("pressure of keys: "));
    EXPECT_THAT(text, HasSubstr("1 exclusive message"));
}

TEST_F(SongCommand, SaysNothingOfWhatIsNotThere) {
    writeBytes(song_, midiFileBytes(0, 480,
                                    {TrackBytes()
                                         .event(0, {0xB0, 7, 100})
                                         .event(0, {0xB0, 64, 0})
                                         .event(0, {0xE0, 0, 80})
                                         .noteOn(0, 60)
                                         .event(480, {0x80, 60, 0})
                                         .end(0)}));
    const std::string text = outputOf({"song"});
    EXPECT_THAT(text, Not(HasSubstr("Not played")));
    EXPECT_THAT(text, Not(HasSubstr("do not end")));
}

// 1,000,000 microseconds a quarter are 60 a minute.
TEST_F(SongCommand, WritesJson) {
    writeBytes(song_, midiFileBytes(0, 480,
                                    {TrackBytes()
                                         .event(0, {0x91, 60, 64})
                                         .tempo(480, 1000000)
                                         .event(0, {0x81, 60, 64})
                                         .end(480)}));
    const json song = json::parse(outputOf({"song", "--json"}));
    EXPECT_EQ(song["seconds"], 1.5);
    EXPECT_EQ(song["tempo"], 120.0);
    EXPECT_EQ(song["lowestTempo"], 60.0);
    ASSERT_EQ(song["channels"].size(), 1U);
    EXPECT_EQ(song["channels"][0]["channel"], 2);
    EXPECT_EQ(song["channels"][0]["lowestNote"], 60);
    EXPECT_EQ(song["notPlayed"], json::array());
}

TEST_F(SongCommand, TellsTheWidestBendRangeThatItsTracksAskForTogether) {
    writeBytes(song_, midiFileBytes(1, 480,
                                    {TrackBytes()
                                         .event(0, {0xB0, 101, 0}) // chooses the bend range,
                                         .event(0, {0xB0, 100, 0})
                                         .event(480, {0xB0, 121, 0}) // and no longer
                                         .end(480),
                                     TrackBytes()
                                         .event(120, {0xB0, 6, 7})
                                         .event(0, {0xB0, 38, 50})
                                         .event(120, {0xB0, 6, 4})
                                         .event(480, {0xB0, 6, 24})
                                         .end(0)}));
    EXPECT_EQ(json::parse(outputOf({"song", "--json"}))["channels"][0]["bendRange"], 7.5);
}

TEST_F(SongCommand, CountsTheMetresAfterTheStart) {
    const auto changesOf = [&](const TrackBytes& track) {
        writeBytes(song_, midiFileBytes(0, 480, {track}));
        return json::parse(outputOf({"song", "--json"}))["meterChanges"];
    };
    EXPECT_EQ(changesOf(TrackBytes().event(480, {0xFF, 0x58, 4, 3, 2, 24, 8}).end(480)), 1)
        << "the first one is not at the start";
    EXPECT_EQ(changesOf(TrackBytes()
                            .event(0, {0xFF, 0x58, 4, 2, 2, 24, 8})
                            .event(0, {0xFF, 0x58, 4, 3, 2, 24, 8})
                            .event(480, {0xFF, 0x58, 4, 3, 2, 24, 8})
                            .event(960, {0xFF, 0x58, 4, 6, 3, 24, 8})
                            .end(480)),
              1);
}

TEST_F(SongCommand, NamesABadFile) {
    writeText(song_, "no music");
    const auto result = zelvatoneWith({"song", song_.string()});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "zelvatone: " + song_.string() + ": not a MIDI file\n");
}

} // namespace
} // namespace zelvatone
