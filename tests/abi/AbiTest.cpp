// Our records and numbers against those of an independent header. A plug-in whose record is one
// byte off crashes its host, and no test that compiles both sides from our header would see it.
//
// This one program includes a header under the GNU GPL (see IndependentNumbers.cpp) and is bound by
// that licence as a whole. It is a test: never installed, never shipped, linked by nothing else.
#include "tests/abi/AbiNumbers.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(BinaryInterface, AgreesWithAnIndependentHeader) {
    const auto ours = ourNumbers();
    const auto theirs = independentNumbers();

    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
        EXPECT_EQ(ours[i].name, theirs[i].name);
        EXPECT_EQ(ours[i].number, theirs[i].number) << ours[i].name;
    }
}

TEST(BinaryInterface, IsComparedInRecordsRequestsAndServices) {
    const auto ours = ourNumbers();
    const auto countOf = [&ours](const std::string& beginning) {
        return std::count_if(ours.begin(), ours.end(), [&beginning](const AbiNumber& entry) {
            return entry.name.rfind(beginning, 0) == 0;
        });
    };

    EXPECT_EQ(countOf("AEffect at "), 20); // all fields but the withdrawn and the reserved ones
    EXPECT_EQ(countOf("VstTimeInfo at "), 12);
    EXPECT_EQ(countOf("effFlags"), 6);
    EXPECT_EQ(countOf("eff"), 41 + 6); // the requests that both headers know, and the flags
    EXPECT_EQ(countOf("audioMaster"), 16);
}
