// dumpModes: the bank as text.
#include "tests/voice/VoiceBench.h"

#include <stdio_ext.h> // how much of a stream is still to be flushed

namespace zelvatone {
namespace {

class DumpModes : public VoiceBench {
protected:
    std::string dumped() {
        return printedBy([this] { voice_.dumpModes(); });
    }
};

TEST_F(DumpModes, PrintsOnlyTheCountOfAnEmptyBank) {
    EXPECT_EQ(dumped(), "p_nosc: 0\n");
}

TEST_F(DumpModes, NamesEveryActiveModeInOrder) {
    place(0, 0.5F, 440.0F, 1.25F);
    aim(0, 0.25F, 442.5F);
    place(1, 0.125F, -60.0F, 0.0F);
    voice_.amp[2] = 7.0F; // not active
    EXPECT_EQ(dumped(), "p_nosc: 2\n"
                        "#0: freq = 440.000000 amp = 0.500000 phase = 1.250000 at = 0.250000 "
                        "ft = 442.500000\n"
                        "#1: freq = -60.000000 amp = 0.125000 phase = 0.000000 at = 0.125000 "
                        "ft = -60.000000\n");
}

TEST_F(DumpModes, WidensFloatsInsteadOfRoundingThem) {
    place(0, 0.1F, 16777217.0F, kInfinity); // 2^24 + 1 is no float; 2^24 is
    EXPECT_EQ(dumped(), "p_nosc: 1\n"
                        "#0: freq = 16777216.000000 amp = 0.100000 phase = inf at = 0.100000 "
                        "ft = 16777216.000000\n");
}

TEST_F(DumpModes, LeavesNothingInTheStreamsBuffer) {
    printedBy([this] {
        voice_.dumpModes();
        EXPECT_EQ(__fpending(stdout), 0U);
    });
}

TEST_F(DumpModes, ChangesNothing) {
    place(0, 0.5F, 440.0F, 1.25F);
    const std::string first = dumped();
    EXPECT_EQ(dumped(), first);
    EXPECT_EQ(voice_.activeCount, 1);
}

} // namespace
} // namespace zelvatone
