#include "cli/commands/ChannelOptions.h"

#include "cli/commands/RenderParts.h"
#include "host/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;

std::string errorOf(const std::vector<std::string>& texts) {
    try {
        parseChannels(texts);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "no error";
}

TEST(ChannelOption, HoldsAChannelAndAProgram) {
    const ChannelChoice choice = parseChannel("10=Pots and Pans in Orbit");
    EXPECT_EQ(choice.channel, 10);
    EXPECT_EQ(choice.program, "Pots and Pans in Orbit");
    EXPECT_EQ(choice.gain, 1.0F);
}

TEST(ChannelOption, HoldsALevelAfterTheLastAt) {
    EXPECT_FLOAT_EQ(parseChannel("2=Organ@-20dB").gain, 0.1F);
    EXPECT_FLOAT_EQ(parseChannel("2=Organ@-20 DB").gain, 0.1F);
    EXPECT_FLOAT_EQ(parseChannel("2=Organ@20").gain, 10.0F);
    EXPECT_FLOAT_EQ(parseChannel("2=A@B=C@0dB").gain, 1.0F);
    EXPECT_EQ(parseChannel("2=A@B=C@0dB").program, "A@B=C");
}

TEST(ChannelOption, LeavesAChannelOut) {
    EXPECT_TRUE(parseChannel("2=off").isOff);
    EXPECT_TRUE(parseChannel("2=OFF").isOff);
    EXPECT_FALSE(parseChannel("2=office").isOff);
    EXPECT_FALSE(parseChannel("2=Organ").isOff);
}

TEST(ChannelOption, RefusesABadChannel) {
    for (const char* text : {"0=Organ", "17=Organ", "-1=Organ", "x=Organ", "1.5=Organ", "=Organ"}) {
        EXPECT_THAT(errorOf({text}), HasSubstr("--channel takes channels from 1 to 16")) << text;
    }
    for (const char* text : {"", "1", "Organ", "1=", "1=@-6dB"}) {
        EXPECT_THAT(errorOf({text}), HasSubstr("takes CHANNEL=PROGRAM")) << text;
    }
}

TEST(ChannelOption, RefusesABadLevel) {
    for (const char* level : {"", "dB", "loud", "121dB", "-121", "nandB", "-6dBFS", "- 6dB"}) {
        EXPECT_THAT(errorOf({std::string("1=Organ@") + level}),
                    HasSubstr("--channel takes levels from -120dB to 120dB"))
            << level;
    }
}

TEST(ChannelOption, RefusesAChannelThatIsNamedTwice) {
    EXPECT_EQ(errorOf({"1=Organ", "2=Meow", "1=Meow"}), "--channel names channel 1 twice");
}

TEST(ChannelOption, TakesANameThatEndsInFxpForAPreset) {
    EXPECT_TRUE(isPresetPath("organ.fxp"));
    EXPECT_TRUE(isPresetPath("/some/where/Organ.FXP"));
    EXPECT_FALSE(isPresetPath("Organ"));
    EXPECT_FALSE(isPresetPath(".fxp"));
}

Song songOn(const std::vector<int>& statuses) {
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), 1.0, {}, {}};
    for (const int status : statuses) {
        song.add(0.0, std::array<std::uint8_t, 3>{static_cast<std::uint8_t>(status), 60, 64});
    }
    return song;
}

std::vector<int> channelsOf(const std::vector<PartPlan>& plans) {
    std::vector<int> channels;
    for (const PartPlan& plan : plans) {
        channels.push_back(plan.channel.value_or(0));
    }
    return channels;
}

using ::testing::ElementsAre;

RenderSettings settingsWith(const std::vector<std::string>& channels,
                            SongLayout layout = SongLayout::kSplit) {
    RenderSettings settings;
    settings.layout = layout;
    settings.channels = parseChannels(channels);
    return settings;
}

std::vector<int> partsOf(const std::vector<int>& statuses, const RenderSettings& settings) {
    return channelsOf(planParts(songOn(statuses), settings, {}));
}

TEST(PartPlans, HaveOnePartForEachChannelThatPlays) {
    EXPECT_THAT(partsOf({0x95, 0x90, 0xB1, 0x82}, settingsWith({})), ElementsAre(1, 6));
    EXPECT_THAT(partsOf({0x90, 0x95, 0x96}, settingsWith({"6=Organ", "2=Meow"})),
                ElementsAre(1, 2, 6, 7));
    EXPECT_THAT(partsOf({0x90, 0x91}, settingsWith({"1=off"})), ElementsAre(2));
}

TEST(PartPlans, HaveOnePartTogetherForAllChannelsThatAreNotNamed) {
    EXPECT_THAT(partsOf({0x90, 0x95}, settingsWith({}, SongLayout::kTogether)), ElementsAre(0));
    const auto settings = settingsWith({"6=Organ", "1=Meow", "2=off"}, SongLayout::kTogether);
    EXPECT_THAT(partsOf({0x90, 0x91, 0x95, 0x96}, settings), ElementsAre(1, 6, 0));
    // Channels 1 and 6 are all that plays; a message to the whole system needs no instrument.
    EXPECT_THAT(partsOf({0x90, 0x95, 0xF0}, settings), ElementsAre(1, 6));
}

TEST(PartPlans, HaveAPartForASongWithoutNotes) {
    EXPECT_THAT(partsOf({}, settingsWith({})), ElementsAre(0));
    EXPECT_THAT(partsOf({0x90}, settingsWith({"1=off"})), ElementsAre(0));
}

TEST(PartPlans, LeaveOutDrumsThatAreNotNamed) {
    const Song song = songOn({0x90, 0x99});
    for (const SongLayout layout : {SongLayout::kSplit, SongLayout::kTogether}) {
        const auto plans = planParts(song, settingsWith({}, layout), {});
        ASSERT_EQ(plans.size(), 1U);
        EXPECT_FALSE(plans[0].plays[10]);
        EXPECT_TRUE(leavesOutDrums(song, settingsWith({}, layout)));
    }
    EXPECT_THAT(partsOf({0x90, 0x99}, settingsWith({"10=Organ"})), ElementsAre(1, 10));
    EXPECT_FALSE(leavesOutDrums(song, settingsWith({"10=Organ"})));
    EXPECT_FALSE(leavesOutDrums(song, settingsWith({"10=off"})));
    EXPECT_FALSE(leavesOutDrums(songOn({0x90}), settingsWith({})));
}

TEST(PartPlans, PlayAWholeRawFileWithOnePart) {
    const auto plans = planParts(songOn({0x90, 0x99}), settingsWith({}, SongLayout::kRaw), {});
    ASSERT_EQ(plans.size(), 1U);
    EXPECT_TRUE(plans[0].isRaw);
    for (int channel = 1; channel <= 16; ++channel) {
        EXPECT_TRUE(plans[0].plays[static_cast<std::size_t>(channel)]) << channel;
    }
}

TEST(PartPlans, GiveEveryPartTheBankAndTheSettings) {
    PluginSetup setup;
    setup.program = "Organ";
    setup.settings.push_back({"Attack", 0.5F, {}});
    setup.preset = PresetFile{"all.fxb", {}};
    setup.preset->preset.isBank = true;
    const auto plans = planParts(songOn({0x90, 0x91}), settingsWith({"1=Meow"}), setup);
    EXPECT_EQ(plans[0].setup.program, "Meow");
    EXPECT_EQ(plans[0].setup.preset->path, "all.fxb");
    EXPECT_EQ(plans[0].setup.settings.size(), 1U);
    EXPECT_EQ(plans[1].setup.program, "Organ");
}

TEST(PartPlans, LeaveAPresetOfOneProgramToTheRest) {
    PluginSetup setup;
    setup.preset = PresetFile{"one.fxp", {}};
    const auto plans = planParts(songOn({0x90, 0x91}), settingsWith({"1=Meow"}), setup);
    EXPECT_FALSE(plans[0].setup.preset);
    EXPECT_TRUE(plans[1].setup.preset);
}

// How names are cleaned is FileNamesTest's.
TEST(StemName, HoldsChannelAndProgram) {
    EXPECT_EQ(stemName(2, "Organ"), "02-Organ");
    EXPECT_EQ(stemName(16, "Up/Down"), "16-Up-Down");
    EXPECT_EQ(stemName(std::nullopt, "Default"), "rest-Default");
    EXPECT_EQ(stemName(3, ""), "03");
}

} // namespace
} // namespace zelvatone
