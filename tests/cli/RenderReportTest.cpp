#include "cli/commands/RenderReport.h"

#include <gtest/gtest.h>

#include <limits>

namespace zelvatone {
namespace {

TEST(RenderReport, WritesLengthsAsAClockDoes) {
    EXPECT_EQ(lengthText(0.0), "0.000 s");
    EXPECT_EQ(lengthText(12.5), "12.500 s");
    EXPECT_EQ(lengthText(63.25), "1:03.250");
    EXPECT_EQ(lengthText(59.9996), "1:00.000");
    EXPECT_EQ(lengthText(3675.0), "61:15.000");
}

TEST(RenderReport, TellsLengthPeakClippingAndSpeed) {
    EXPECT_EQ(closingLine("a.wav", {10.0, 0.5, -3.04, 0, 0}),
              "a.wav: 10.000 s, peak -3.0 dBFS, no clipped samples, 20.0 x real time\n");
    EXPECT_EQ(closingLine("a.wav", {10.0, 0.5, 1.0, 1, 0}),
              "a.wav: 10.000 s, peak 1.0 dBFS, 1 clipped sample, 20.0 x real time\n");
}

TEST(RenderReport, SaysSilentInsteadOfAPeakWithoutEnd) {
    EXPECT_EQ(closingLine("a.wav", {1.0, 0.0, -std::numeric_limits<double>::infinity(), 0, 0}),
              "a.wav: 1.000 s, silent, no clipped samples\n");
}

TEST(RenderReport, CountsSilencedSamples) {
    EXPECT_EQ(closingLine("a.wav", {1.0, 0.1, 0.0, 7, 3}),
              "a.wav: 1.000 s, peak 0.0 dBFS, 7 clipped samples, 3 samples were NaN or "
              "infinite (silenced), 10.0 x real time\n");
}

// Down by the peak, and to the next tenth below.
TEST(RenderReport, AdvisesALevelWithWhichNothingClips) {
    EXPECT_EQ(adviceLine("--gain", 0.0, 7.43), "nothing clips with --gain -7.5\n");
    EXPECT_EQ(adviceLine("--gain", 12.0, 5.95), "nothing clips with --gain 6.0\n");
    EXPECT_EQ(adviceLine("--gain", 0.0, 0.0), "nothing clips with --gain -0.1\n");
    EXPECT_EQ(adviceLine("--normalize", -1.0, 2.0), "nothing clips with --normalize -3.1\n");
    EXPECT_EQ(adviceLine("--gain", 0.0, -std::numeric_limits<double>::infinity()), "");
}

TEST(RenderReport, NamesStemsThatClip) {
    EXPECT_EQ(stemLine("parts/02-Organ.wav", 7), "parts/02-Organ.wav: 7 clipped samples\n");
}

TEST(RenderReport, TellsWhyTheSoundWasFadedOut) {
    EXPECT_EQ(
        endlessLine(1),
        "1 note of the song does not end: faded out half a minute after the end of the song\n");
    EXPECT_EQ(
        endlessLine(2),
        "2 notes of the song do not end: faded out half a minute after the end of the song\n");
    EXPECT_EQ(endlessLine(0),
              "the sound does not end: faded out half a minute after the end of the song\n");
}

} // namespace
} // namespace zelvatone
