#include "host/render/Transport.h"

#include "host/midi/MidiFileReader.h"
#include "tests/support/MidiFileBuilder.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

// 120 quarters a minute for two seconds, then 60; three quarters a bar.
Song waltz() {
    return makeSong(parseMidiFile(midiFileBytes(0, 480,
                                                {TrackBytes()
                                                     .event(0, {0xFF, 0x58, 4, 3, 2, 24, 8})
                                                     .tempo(0, 500000)
                                                     .tempo(1920, 1000000)
                                                     .end(1920)})));
}

TEST(Transport, TellsThePlaceInSamplesAndQuarters) {
    const Song song = waltz();
    const VstTimeInfo time = Transport(song, 48000.0).at(36000); // 0.75 s
    EXPECT_DOUBLE_EQ(time.samplePos, 36000.0);
    EXPECT_DOUBLE_EQ(time.sampleRate, 48000.0);
    EXPECT_DOUBLE_EQ(time.ppqPos, 1.5);
    EXPECT_DOUBLE_EQ(time.tempo, 120.0);
    EXPECT_DOUBLE_EQ(time.barStartPos, 0.0);
    EXPECT_EQ(time.timeSigNumerator, 3);
    EXPECT_EQ(time.timeSigDenominator, 4);
}

TEST(Transport, FollowsTheTempo) {
    const Song song = waltz();
    const Transport transport(song, 48000.0);
    EXPECT_DOUBLE_EQ(transport.at(95999).tempo, 120.0);
    EXPECT_DOUBLE_EQ(transport.at(96000).tempo, 60.0);
    EXPECT_DOUBLE_EQ(transport.at(96000).ppqPos, 4.0);
    const VstTimeInfo late = transport.at(96000 + 120000); // 2.5 s of one quarter each
    EXPECT_DOUBLE_EQ(late.ppqPos, 6.5);
    EXPECT_DOUBLE_EQ(late.barStartPos, 6.0);
}

TEST(Transport, SaysWhichFieldsHold) {
    const Song song = waltz();
    const Transport transport(song, 48000.0);
    constexpr VstInt32 fields = kVstPpqPosValid | kVstTempoValid | kVstBarsValid | kVstTimeSigValid;
    EXPECT_EQ(transport.at(0).flags, fields | kVstTransportPlaying | kVstTransportChanged);
    EXPECT_EQ(transport.at(1).flags, fields | kVstTransportPlaying);
}

} // namespace
} // namespace zelvatone
