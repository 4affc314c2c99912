#include "host/midi/Song.h"

#include "host/Error.h"
#include "host/midi/MidiFileReader.h"
#include "tests/support/MidiFileBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;

Song songOf(int format, int division, const std::vector<TrackBytes>& tracks) {
    return makeSong(parseMidiFile(midiFileBytes(format, division, tracks)));
}

std::vector<double> secondsOf(const Song& song) {
    std::vector<double> seconds;
    for (const SongEvent& event : song.events) {
        seconds.push_back(event.seconds);
    }
    return seconds;
}

TEST(Song, PutsEventsAtTheSecondsThatTheTempoGives) {
    // A quarter of 0.5 s, then one of 1 s.
    const Song song = songOf(
        0, 100,
        {TrackBytes().tempo(0, 500000).noteOn(100, 60).tempo(0, 1000000).noteOn(100, 61).end(50)});
    EXPECT_THAT(secondsOf(song), ElementsAre(0.5, 1.5));
    EXPECT_DOUBLE_EQ(song.seconds, 2.0);
}

TEST(Song, LetsATempoInAnyTrackMoveAllTracks) {
    const Song song =
        songOf(1, 100, {TrackBytes().noteOn(200, 60), TrackBytes().tempo(100, 250000)});
    EXPECT_THAT(secondsOf(song), ElementsAre(0.75));
}

TEST(Song, MergesTracksByTimeAndKeepsTheirOrderAmongEquals) {
    const Song song = songOf(1, 100,
                             {TrackBytes().noteOn(0, 1).noteOn(100, 2),
                              TrackBytes().noteOn(0, 3).noteOn(50, 4).noteOn(50, 5)});
    std::vector<int> notes;
    for (const SongEvent& event : song.events) {
        notes.push_back(event.bytes[1]);
    }
    EXPECT_THAT(notes, ElementsAre(1, 3, 4, 2, 5));
}

TEST(Song, KeepsMetaEventsFromTheInstrument) {
    EXPECT_TRUE(songOf(0, 96, {TrackBytes().event(0, {0xFF, 3, 1, 'x'})}).events.empty());
}

TEST(Song, LastsAsLongAsItsLongestTrack) {
    const Song song = songOf(1, 100, {TrackBytes().noteOn(0, 1).end(300), TrackBytes().end(200)});
    EXPECT_DOUBLE_EQ(song.seconds, 1.5);
}

TEST(Song, ReadsTimeSignatures) {
    const Song song = songOf(0, 100, {TrackBytes().event(200, {0xFF, 0x58, 4, 6, 3, 24, 8})});
    EXPECT_EQ(song.meter.barAt(1.0).numerator, 4);
    EXPECT_EQ(song.meter.barAt(2.0).numerator, 6);
    EXPECT_EQ(song.meter.barAt(2.0).denominator, 8);
}

TEST(Song, SkipsTimeSignaturesThatMakeNoSense) {
    const Song song = songOf(0, 100,
                             {TrackBytes()
                                  .event(0, {0xFF, 0x58, 4, 0, 2, 24, 8})
                                  .event(0, {0xFF, 0x58, 4, 4, 200, 24, 8})
                                  .event(0, {0xFF, 0x58, 1, 3})});
    EXPECT_EQ(song.meter.barAt(0.0).numerator, 4);
    EXPECT_EQ(song.meter.barAt(0.0).denominator, 4);
}

TEST(Song, LetsNoTempoMoveAFileThatCountsFilmFrames) {
    const int milliseconds = ((256 - 25) << 8) | 40;
    const Song song =
        songOf(0, milliseconds, {TrackBytes().tempo(0, 1000).noteOn(1500, 60).end(0)});
    EXPECT_THAT(secondsOf(song), ElementsAre(1.5));
    EXPECT_DOUBLE_EQ(song.tempo.tempoAtSeconds(1.0), 120.0);
    EXPECT_DOUBLE_EQ(song.tempo.quartersAtSeconds(1.0), 2.0);
}

TEST(Song, RefusesATempoOfZeroOrOfAWrongLength) {
    EXPECT_THROW(songOf(0, 96, {TrackBytes().tempo(0, 0)}), InputError);
    EXPECT_THROW(songOf(0, 96, {TrackBytes().event(0, {0xFF, 0x51, 1, 7})}), InputError);
}

TEST(Song, RefusesToLastLongerThanADay) {
    // 2^28 - 1 ticks of half a second each are years.
    EXPECT_THROW(songOf(0, 1, {TrackBytes().end(0x0FFFFFFF)}), InputError);
    EXPECT_NO_THROW(songOf(0, 1, {TrackBytes().end(2 * 60 * 60 * 24)}));
}

} // namespace
} // namespace zelvatone
