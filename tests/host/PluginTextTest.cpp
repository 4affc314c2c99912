#include "host/plugin/PluginText.h"

#include <gtest/gtest.h>

#include <cstring>

namespace zelvatone {
namespace {

TEST(PluginText, KeepsUtf8) {
    EXPECT_EQ(cleanText("Mod\u00e9 \u266a"), "Mod\u00e9 \u266a");
}

TEST(PluginText, ReadsOtherBytesAsLatin1) {
    EXPECT_EQ(cleanText("20 \xB0"
                        "C"),
              "20 \u00b0C");
}

TEST(PluginText, RefusesUtf8ThatIsNotTheShortestOrNoCharacter) {
    EXPECT_TRUE(isUtf8("\xF0\x9F\x8E\xB5"));
    EXPECT_FALSE(isUtf8("\xC0\x80"));         // a zero in two bytes
    EXPECT_FALSE(isUtf8("\xE0\x80\x80"));     // and in three
    EXPECT_FALSE(isUtf8("\xED\xA0\x80"));     // half of a pair
    EXPECT_FALSE(isUtf8("\xF4\x90\x80\x80")); // after the last character
    EXPECT_FALSE(isUtf8("\xE2\x99"));         // cut
}

TEST(PluginText, LeavesNoControlCharacters) {
    EXPECT_EQ(cleanText("\x1B[31mred\n"), "[31mred");
    EXPECT_EQ(cleanText("a\tb\x7F"), "a b");
}

TEST(PluginText, TrimsSpaceAround) {
    EXPECT_EQ(cleanText("  0.20 s  "), "0.20 s");
    EXPECT_EQ(cleanText("   "), "");
}

TEST(PluginText, HasRoomForTextsFarTooLong) {
    EXPECT_EQ(pluginText([](char* buffer) { std::memset(buffer, 'x', 300); }),
              std::string(300, 'x'));
    EXPECT_EQ(pluginText([](char*) {}), "");
}

} // namespace
} // namespace zelvatone
