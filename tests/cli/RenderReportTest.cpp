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

} // namespace
} // namespace zelvatone
