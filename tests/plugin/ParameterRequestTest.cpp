#include "tests/plugin/GuardedText.h"
#include "tests/plugin/LoadedPlugin.h"

#include <array>
#include <climits>
#include <cmath>
#include <csignal>
#include <limits>
#include <string>

namespace {

constexpr VstInt32 kCount = 23;

// As a host shows them: names cut to eight characters, and the defaults' texts.
struct ParameterTexts {
    const char* name;
    const char* label;
    const char* display;
};

constexpr std::array<ParameterTexts, kCount> kTexts = {{
    {"Mode Shi", "osc", "0 osc"}, {"Shift In", "beats", "2 beats"},
    {"Min Mode", "osc", "2 osc"}, {"Max Mode", "osc", "20 osc"},
    {"Falloff", "", "-1.00 "},    {"Parity", "", "0.00 "},
    {"Jitter", "Hz", "0.00 Hz"},  {"Freq Dro", "", "0.00 "},
    {"Chop", "", "1.00 "},        {"Modes", "", "0.00 "},
    {"Detune", "", "0.50 "},      {"Power", "", "0.50 "},
    {"Drop Mod", "", "1.00 "},    {"Wave", "", "Sine"},
    {"Crush", "bits", "0 bits"},  {"Blend Ti", "s", "0.01 s"},
    {"Exit Pee", "", "0.00 "},    {"Mode Ini", "osc", "10 osc"},
    {"Attack", "s", "0.20 s"},    {"Decay", "s", "0.10 s"},
    {"Sustain", "%", "70%"},      {"Release", "s", "0.30 s"},
    {"Reserved", "", "0 "},
}};

constexpr VstInt32 kModeShift = 0;     // whole numbers -3 to 3
constexpr VstInt32 kShiftInterval = 1; // 2 to the power of -5 to 5 beats
constexpr VstInt32 kFalloff = 4;       // -3 to 0
constexpr VstInt32 kJitter = 6;        // 0 to 100 Hz
constexpr VstInt32 kWave = 13;
constexpr VstInt32 kAttack = 18; // 0.01 to 2 s

class ParameterRequest : public LoadedPluginTest {
protected:
    // Checks the text and that exactly eight characters and a terminator were written.
    void expectText(VstInt32 request, VstInt32 index, const std::string& expected) {
        GuardedText text;
        EXPECT_EQ(plugin.ask(request, index, 0, text.data()), 0);
        EXPECT_EQ(text.text(), expected) << "request " << request << ", parameter " << index;
        EXPECT_EQ(text.touched(), 9U) << "request " << request << ", parameter " << index;
    }
    std::string display(VstInt32 index) { return plugin.text(effGetParamDisplay, index); }
};

TEST_F(ParameterRequest, CutsNamesAfterEightCharacters) {
    for (VstInt32 i = 0; i < kCount; ++i) {
        expectText(effGetParamName, i, kTexts[i].name);
    }
}

TEST_F(ParameterRequest, WritesTheUnitsAsLabels) {
    for (VstInt32 i = 0; i < kCount; ++i) {
        expectText(effGetParamLabel, i, kTexts[i].label);
    }
}

TEST_F(ParameterRequest, WritesTheDefaultsOfTheFirstProgramAsDisplays) {
    for (VstInt32 i = 0; i < kCount; ++i) {
        expectText(effGetParamDisplay, i, kTexts[i].display);
    }
}

TEST_F(ParameterRequest, CutsDisplaysAfterEightCharacters) {
    plugin.setParameter(kJitter, 1.0F);
    expectText(effGetParamDisplay, kJitter, "100.00 H");
    plugin.setParameter(kShiftInterval, 0.0F);
    expectText(effGetParamDisplay, kShiftInterval, "1/32 bea");
    plugin.setParameter(kWave, 1.0F);
    expectText(effGetParamDisplay, kWave, "Son of P");
}

TEST_F(ParameterRequest, ReturnsThePlaceOfTheDefaultInItsRange) {
    EXPECT_FLOAT_EQ(plugin.getParameter(kAttack), 0.19F / 1.99F); // 0.2 of 0.01 to 2
    EXPECT_FLOAT_EQ(plugin.getParameter(kFalloff), 2.0F / 3.0F);  // -1 of -3 to 0
    EXPECT_EQ(plugin.getParameter(kModeShift), 0.5F);             // 0 of -3 to 3
    EXPECT_EQ(plugin.getParameter(kJitter), 0.0F);
}

TEST_F(ParameterRequest, ReadsBackWhatWasSet) {
    for (VstInt32 i = 0; i < kCount; ++i) {
        plugin.setParameter(i, 0.0F);
        EXPECT_EQ(plugin.getParameter(i), 0.0F) << i;
        plugin.setParameter(i, 1.0F);
        EXPECT_EQ(plugin.getParameter(i), 1.0F) << i;
    }
}

TEST_F(ParameterRequest, RoundsWholeNumbersDownAndShowsIt) {
    plugin.setParameter(kModeShift, 0.75F); // -3 + 6 x 0.75 = 1.5
    EXPECT_EQ(display(kModeShift), "1 osc");
    EXPECT_FLOAT_EQ(plugin.getParameter(kModeShift), 4.0F / 6.0F);
}

TEST_F(ParameterRequest, ReachesTheParameterThatItNames) {
    for (VstInt32 set = 0; set < kCount; ++set) {
        for (VstInt32 i = 0; i < kCount; ++i) {
            plugin.setParameter(i, 0.0F);
        }
        plugin.setParameter(set, 1.0F);
        for (VstInt32 i = 0; i < kCount; ++i) {
            EXPECT_EQ(plugin.getParameter(i), i == set ? 1.0F : 0.0F) << set << ", " << i;
        }
    }
}

TEST_F(ParameterRequest, ClampsValuesOutsideTheRange) {
    for (VstInt32 i = 0; i < kCount; ++i) {
        for (const float above : {1.5F, 1e30F, std::numeric_limits<float>::infinity()}) {
            plugin.setParameter(i, above);
            EXPECT_EQ(plugin.getParameter(i), 1.0F) << i << ", " << above;
        }
        for (const float below : {-1.0F, -1e30F, -std::numeric_limits<float>::infinity()}) {
            plugin.setParameter(i, below);
            EXPECT_EQ(plugin.getParameter(i), 0.0F) << i << ", " << below;
        }
    }
}

TEST_F(ParameterRequest, KeepsNotANumberUntilTheNextValue) {
    for (VstInt32 i = 0; i < kCount; ++i) {
        plugin.setParameter(i, std::nanf(""));
        EXPECT_TRUE(std::isnan(plugin.getParameter(i))) << i;
        GuardedText text;
        plugin.ask(effGetParamDisplay, i, 0, text.data());
        EXPECT_EQ(text.touched(), 9U) << i;
        plugin.setParameter(i, 1.0F);
        EXPECT_EQ(plugin.getParameter(i), 1.0F) << i;
    }
}

TEST_F(ParameterRequest, IsIgnoredOutsideTheList) {
    for (const VstInt32 index : {-1, INT_MIN, kCount + 1, 1000, INT_MAX}) {
        plugin.setParameter(index, 1.0F);
        EXPECT_EQ(plugin.getParameter(index), 0.0F) << index;
        for (const VstInt32 request : {effGetParamName, effGetParamLabel, effGetParamDisplay}) {
            GuardedText text;
            EXPECT_EQ(plugin.ask(request, index, 0, text.data()), 0) << index;
            EXPECT_EQ(text.touched(), 0U) << index;
        }
    }
    for (VstInt32 i = 0; i < kCount; ++i) {
        expectText(effGetParamDisplay, i, kTexts[i].display);
    }
}

TEST_F(ParameterRequest, EndsTheProcessAtTheIndexAfterTheList) {
    const auto aborts = testing::KilledBySignal(SIGABRT);
    EXPECT_EXIT(plugin.setParameter(kCount, 0.5F), aborts, "out_of_range");
    EXPECT_EXIT(plugin.getParameter(kCount), aborts, "out_of_range");
    for (const VstInt32 request : {effGetParamName, effGetParamLabel, effGetParamDisplay}) {
        EXPECT_EXIT(plugin.text(request, kCount), aborts, "out_of_range") << request;
    }
}

TEST_F(ParameterRequest, FindsEveryIndexAutomatable) {
    for (const VstInt32 index : {0, 1, kCount - 1, kCount, kCount + 1, -1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(plugin.ask(effCanBeAutomated, index), 1) << index;
    }
}

TEST_F(ParameterRequest, OffersNoTextEntryAndNoProperties) {
    char text[] = "0.5";
    EXPECT_EQ(plugin.ask(effString2Parameter, kAttack, 0, text), 0);
    EXPECT_EQ(plugin.ask(effGetParameterProperties, kAttack, 0, text), 0);
    EXPECT_STREQ(text, "0.5");
    EXPECT_EQ(display(kAttack), kTexts[kAttack].display);
}

TEST_F(ParameterRequest, IsNotReportedBackToTheHost) {
    plugin.setParameter(kAttack, 0.5F);
    EXPECT_TRUE(host.calls.empty());
}

} // namespace
