#include "host/render/Automation.h"

#include "host/Error.h"
#include "host/files/CsvLine.h"
#include "host/midi/MidiFileReader.h"
#include "host/render/InstrumentPlayer.h"
#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::vector<std::string> kNames{"Level", "Shift In", "Spare"};

std::string errorOf(const std::string& text) {
    try {
        parseAutomation(text, kNames);
    } catch (const InputError& error) {
        return error.what();
    }
    return "no error";
}

// "seconds parameter value" of each move.
std::vector<std::string> movesOf(const std::string& text) {
    std::vector<std::string> moves;
    for (const AutomationMove& move : parseAutomation(text, kNames)) {
        std::ostringstream line;
        line << move.seconds << ' ' << move.parameter << ' ' << move.value;
        moves.push_back(line.str());
    }
    return moves;
}

TEST(Automation, ReadsParametersByNameAndByNumber) {
    EXPECT_THAT(movesOf("0,Level,0.5\n1.25,SHIFT INTERVAL,1\n2,2,0\n"),
                ElementsAre("0 0 0.5", "1.25 1 1", "2 2 0"));
}

TEST(Automation, SkipsHeadingCommentsAndEmptyLines) {
    EXPECT_THAT(
        movesOf("# from a friend\n\nSeconds,Parameter,Value\n  # the first\n1,Level,0\n\t\n"),
        ElementsAre("1 0 0"));
    EXPECT_THAT(movesOf(""), IsEmpty());
}

TEST(Automation, ReadsWhatSpreadsheetsWrite) {
    EXPECT_THAT(movesOf("\xEF\xBB\xBF\"time, s\",knob,value\r\n 0.5 , \"Level\" , 0.25 \r\n"),
                ElementsAre("0.5 0 0.25"));
}

TEST(Automation, ReadsALastLineWithoutAnEnd) {
    EXPECT_THAT(movesOf("1,Level,0"), ElementsAre("1 0 0"));
}

TEST(Automation, SortsByTimeAndKeepsTheOrderOfEquals) {
    EXPECT_THAT(movesOf("2,Level,0.1\n1,Level,0.2\n2,Level,0.3\n1,Spare,0.4\n"),
                ElementsAre("1 0 0.2", "1 2 0.4", "2 0 0.1", "2 0 0.3"));
}

TEST(Automation, SaysWhichLineIsNoGood) {
    EXPECT_EQ(errorOf("1,Level,0\n\nx,Level,0\n"),
              "3: 'x' is not a time: seconds, from 0 to a day");
    EXPECT_THAT(errorOf("-1,Level,0"), HasSubstr("1: '-1' is not a time"));
    EXPECT_THAT(errorOf("nan,Level,0"), HasSubstr("is not a time"));
    EXPECT_THAT(errorOf("86401,Level,0"), HasSubstr("is not a time"));
    EXPECT_EQ(errorOf("1,Level,1.5"), "1: '1.5' is not a value from 0 to 1 or as Level shows it");
    EXPECT_EQ(errorOf("1,Level,"), "1: '' is not a value from 0 to 1 or as Level shows it");
    EXPECT_EQ(errorOf("1,Level"), "1: a move has three fields (seconds, parameter, value), not 2");
    EXPECT_THAT(errorOf("1;Level;0"), HasSubstr("write commas"));
    EXPECT_THAT(errorOf("1,Level,0,5"), HasSubstr("not 4"));
    EXPECT_EQ(errorOf("1,Lvel,0"), "1: unknown parameter 'Lvel'; did you mean 'Level'?");
    EXPECT_THAT(errorOf("1,3,0"), HasSubstr("1: unknown parameter 3"));
    EXPECT_THAT(errorOf("1,\"Level,0"), HasSubstr("1: quotes around only a part"));
}

TEST(Automation, TakesOnlyTheFirstLineForAHeading) {
    EXPECT_THAT(errorOf("1,Level,0\nseconds,parameter,value\n"), HasSubstr("2: 'seconds'"));
    EXPECT_THAT(errorOf("a,b,c\nseconds,parameter,value\n"), HasSubstr("2: 'seconds'"));
}

TEST(Automation, TakesNoLineWithDigitsForAHeading) {
    EXPECT_EQ(errorOf("Time 1,Level,Value\n"),
              "1: 'Time 1' is not a time: seconds, from 0 to a day; a heading has no digits");
    EXPECT_THAT(errorOf("1s,Level,0.5x\n"), HasSubstr("1: '1s' is not a time"));
    EXPECT_THAT(errorOf("time,level,50 percent\n"), HasSubstr("1: 'time' is not a time"));
}

TEST(Automation, TellsThatFieldsHaveCommasAndNumbersAPoint) {
    EXPECT_EQ(errorOf("0.5;Level;0.7\n"),
              "1: semicolons between the fields; write commas, and numbers with a point");
    EXPECT_EQ(errorOf("0,5,Level,0,7\n"), "1: 5 fields; write numbers with a point: 0.5");
}

TEST(CsvFields, HoldCommasAndQuotesInQuotes) {
    EXPECT_THAT(csvFields("a,\"b,\"\"c\"\"\",\"\","), ElementsAre("a", "b,\"c\"", "", ""));
    EXPECT_THROW(csvFields("\"a\"b"), InputError);
    EXPECT_THROW(csvFields("\"a"), InputError);
}

TEST(AutomationSchedule, PutsMovesOnTheNearestSample) {
    // 0.1 s is sample 4410, whatever the product of the two comes to in binary.
    const auto schedule = scheduleMoves({{0.1, 0, 0.5F}, {1.00001, 1, 0.25F}}, 44100.0);
    EXPECT_EQ(schedule[0].frame, 4410);
    EXPECT_EQ(schedule[1].frame, 44100);
    EXPECT_EQ(schedule[1].parameter, 1);
}

// A pulse at every sample, whose height is the level that holds in its block. At 1000 Hz in blocks
// of ten: a move at 10 ms is in time for the block that starts there, one at 11 ms waits for the
// next.
TEST(AutomationSchedule, IsAppliedAtTheFirstBlockStartAtOrAfterTheTime) {
    TrackBytes track;
    track.event(0, {0x90, 0, 64});
    for (int i = 1; i < 40; ++i) {
        track.event(1, {0x90, 0, 64});
    }
    const Song song = makeSong(parseMidiFile(midiFileBytes(0, 500, {track.end(1)})));
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {1000.0, 10});
    const auto moves = parseAutomation("0.010,Level,0.5\n0.011,Level,0.25\n", kNames);
    InstrumentPlayer player(plugin, song, scheduleEvents(song, 1000.0),
                            scheduleMoves(moves, 1000.0));
    std::vector<float> levels;
    for (int block = 0; block < 4; ++block) {
        std::vector<float> mix(20, 0.0F);
        player.renderBlock();
        player.addTo(mix, 2.0F);
        levels.push_back(mix[0]);
        EXPECT_EQ(mix[18], mix[0]) << "one level holds for a block";
    }
    EXPECT_THAT(levels, ElementsAre(1.0F, 0.5F, 0.25F, 0.25F));
}

TEST(AutomationSchedule, MakesMovesOfOneTimeInTheirOrder) {
    const Song song = makeSong(parseMidiFile(midiFileBytes(0, 500, {TrackBytes().end(1)})));
    const PluginLibrary library(testPlugin("pulse"));
    HostedPlugin plugin(library, {1000.0, 10});
    InstrumentPlayer player(plugin, song, scheduleEvents(song, 1000.0),
                            {{0, 0, 0.5F}, {0, 0, 0.75F}, {1, 0, 0.1F}});
    player.renderBlock();
    EXPECT_EQ(plugin.parameter(0), 0.75F);
}

} // namespace
} // namespace zelvatone
