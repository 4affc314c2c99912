#include "tests/plugin/LoadedPlugin.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>

namespace {

constexpr unsigned char kMark = 0x7E;

// A host's pin record between marked bytes, itself full of marks.
struct MarkedPins {
    MarkedPins() { std::memset(static_cast<void*>(this), kMark, sizeof *this); }

    static bool isMarked(const void* from, const void* to) {
        const auto isMark = [](unsigned char byte) { return byte == kMark; };
        return std::all_of(static_cast<const unsigned char*>(from),
                           static_cast<const unsigned char*>(to), isMark);
    }

    VstPinProperties pins;
    unsigned char guard[64];
};

class OutputPin : public LoadedPluginTest {
protected:
    VstIntPtr askFor(VstInt32 index) {
        return plugin.ask(effGetOutputProperties, index, 0, &record.pins);
    }

    MarkedPins record;
};

TEST_F(OutputPin, ZeroIsTheLeftOfAStereoPair) {
    EXPECT_EQ(askFor(0), 1);
    EXPECT_STREQ(record.pins.label, "Vstx 1");
    EXPECT_EQ(record.pins.flags, 3); // active, stereo
}

TEST_F(OutputPin, OneIsItsRight) {
    EXPECT_EQ(askFor(1), 1);
    EXPECT_STREQ(record.pins.label, "Vstx 2");
    EXPECT_EQ(record.pins.flags, 3);
}

TEST_F(OutputPin, FillsLabelAndFlagsAndNothingElse) {
    askFor(0);
    EXPECT_EQ(record.pins.label[63], '\0');
    EXPECT_TRUE(
        MarkedPins::isMarked(&record.pins.arrangementType, record.guard + sizeof record.guard));
}

TEST_F(OutputPin, IsDeniedAndWritesNothingWhenItDoesNotExist) {
    for (const VstInt32 index : {2, 3, 1000, INT_MAX, -1, INT_MIN}) {
        EXPECT_EQ(askFor(index), 0) << index;
        EXPECT_TRUE(MarkedPins::isMarked(&record, &record + 1)) << index;
    }
}

TEST_F(OutputPin, IsDeniedWithoutARecordToFill) {
    EXPECT_EQ(plugin.ask(effGetOutputProperties, 0), 0);
}

TEST_F(OutputPin, HasNoInputBesideIt) {
    EXPECT_EQ(plugin.ask(effGetInputProperties, 0, 0, &record.pins), 0);
    EXPECT_TRUE(MarkedPins::isMarked(&record, &record + 1));
}

} // namespace
