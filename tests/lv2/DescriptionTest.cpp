// The bundle's description, as a host reads it.
#include "tests/lv2/HostedLv2.h"
#include "tests/plugin/LoadedPlugin.h"

#include <lv2/core/lv2.h>
#include <lv2/ui/ui.h>
#include <lv2/units/units.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <set>

namespace zelvatone::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::Pair;
using testing::SizeIs;

const Lv2Bundle& bundle() {
    return Lv2Bundle::get();
}

// The texts of a port's choices by their values.
std::map<float, std::string> choicesOf(const char* symbol) {
    std::map<float, std::string> choices;
    const LilvOwner<LilvNodes> points(
        lilv_port_get_scale_points(bundle().plugin(), bundle().port(symbol)));
    LILV_FOREACH(scale_points, i, points.get()) {
        const LilvScalePoint* point = lilv_scale_points_get(points.get(), i);
        choices[lilv_node_as_float(lilv_scale_point_get_value(point))] =
            lilv_node_as_string(lilv_scale_point_get_label(point));
    }
    return choices;
}

struct Range {
    float min, max, usual;
    bool operator==(const Range&) const = default;
};

Range rangeOf(const char* symbol) {
    LilvNode* min = nullptr;
    LilvNode* max = nullptr;
    LilvNode* usual = nullptr;
    lilv_port_get_range(bundle().plugin(), bundle().port(symbol), &usual, &min, &max);
    const LilvOwner<LilvNode> owners[] = {LilvOwner<LilvNode>(min), LilvOwner<LilvNode>(max),
                                          LilvOwner<LilvNode>(usual)};
    return {lilv_node_as_float(min), lilv_node_as_float(max), lilv_node_as_float(usual)};
}

TEST(Lv2Description, HasAPortForEveryParameterButReserved) {
    EXPECT_THAT(bundle().controlSymbols(),
                ElementsAre("enabled", "mode_shift", "shift_interval", "min_modes", "max_modes",
                            "falloff", "parity", "jitter", "freq_drop", "chop", "modes", "detune",
                            "power", "drop_mod", "wave", "crush", "blend_time", "exit_peel",
                            "mode_init", "attack", "decay", "sustain", "release"));
}

TEST(Lv2Description, NamesPortsInFull) {
    const LilvPort* port = bundle().port("shift_interval");
    EXPECT_EQ(bundle().portText(port, LV2_CORE__name), "Shift Interval");
}

TEST(Lv2Description, HasRangesInUnits) {
    EXPECT_EQ(rangeOf("mode_shift"), (Range{-3, 3, 0}));
    EXPECT_EQ(rangeOf("max_modes"), (Range{0, 100, 20}));
    EXPECT_EQ(rangeOf("attack"), (Range{0.01F, 2, 0.2F}));
    EXPECT_EQ(rangeOf("sustain"), (Range{0, 1, 0.7F}));
}

TEST(Lv2Description, MarksWholeNumbers) {
    std::set<std::string> whole;
    for (const std::string& symbol : bundle().controlSymbols()) {
        if (bundle().portIs(bundle().port(symbol), LV2_CORE__integer)) {
            whole.insert(symbol);
        }
    }
    EXPECT_THAT(whole, ElementsAre("crush", "enabled", "max_modes", "min_modes", "mode_init",
                                   "mode_shift", "shift_interval", "wave"));
}

TEST(Lv2Description, ListsChoicesWithTheirTexts) {
    EXPECT_THAT(choicesOf("wave"), ElementsAre(Pair(0, "Sine"), Pair(1, "Square"), Pair(2, "Saw"),
                                               Pair(3, "Poly"), Pair(4, "Son of Poly")));
    EXPECT_THAT(choicesOf("shift_interval"),
                AllOf(SizeIs(11), Contains(Pair(-5, "1/32 beats")), Contains(Pair(5, "32 beats"))));
    EXPECT_TRUE(bundle().portIs(bundle().port("wave"), LV2_CORE__enumeration));
}

TEST(Lv2Description, SaysEachUnitOnce) {
    for (const std::string& symbol : bundle().controlSymbols()) {
        const bool hasUnit = !bundle().portText(bundle().port(symbol), LV2_UNITS__unit).empty();
        EXPECT_FALSE(hasUnit && !choicesOf(symbol.c_str()).empty()) << symbol;
    }
    EXPECT_EQ(bundle().portText(bundle().port("attack"), LV2_UNITS__unit), LV2_UNITS__s);
    EXPECT_EQ(bundle().portText(bundle().port("jitter"), LV2_UNITS__unit), LV2_UNITS__hz);
    EXPECT_EQ(bundle().portText(bundle().port("parity"), LV2_UNITS__unit), "");
}

TEST(Lv2Description, HasAnEditorForX11) {
    const std::unique_ptr<LilvUIs, void (*)(LilvUIs*)> editors(
        lilv_plugin_get_uis(bundle().plugin()), lilv_uis_free);
    ASSERT_EQ(lilv_uis_size(editors.get()), 1U);
    const LilvUI* editor = lilv_uis_get(editors.get(), lilv_uis_begin(editors.get()));
    EXPECT_STREQ(lilv_node_as_uri(lilv_ui_get_uri(editor)), lv2::kEditorUri);
    EXPECT_TRUE(lilv_ui_is_a(editor, bundle().uri(LV2_UI__X11UI).get()));
}

TEST(Lv2Description, HasNoLatency) {
    EXPECT_FALSE(lilv_plugin_has_latency(bundle().plugin()));
}

TEST(Lv2Description, HasAPresetForEveryProgramOfTheVst24File) {
    const RecordingHost host;
    const LoadedPlugin plugin;
    ASSERT_EQ(plugin.record->numPrograms, 42);
    for (int program = 0; program < plugin.record->numPrograms; ++program) {
        const auto preset = bundle().preset(program);
        ASSERT_NE(preset, nullptr);
        plugin.ask(effSetProgram, 0, program);
        EXPECT_EQ(lilv_state_get_label(preset.get()), plugin.text(effGetProgramName));
        const PortValues values = Lv2Bundle::valuesOf(preset.get());
        EXPECT_THAT(values, SizeIs(22));
        EXPECT_THAT(values, Not(Contains(testing::Key("enabled"))));
    }
}

// The standard's own tools, which see this bundle and those of the standard.
bool isInstalled(const std::string& tool) {
    return std::system(("command -v " + tool + " >/dev/null").c_str()) == 0;
}

int run(const std::string& command) {
    return std::system(
        ("LV2_PATH='" ZELVATONE_LV2_PATH ":/usr/lib/lv2' " + command + " >&2").c_str());
}

TEST(Lv2Tools, SordValidateFindsNoError) {
    if (!isInstalled("sord_validate")) {
        GTEST_SKIP() << "no sordi";
    }
    EXPECT_EQ(
        run("sord_validate $(find /usr/lib/lv2 -name '*.ttl') " + Lv2Bundle::folder() + "*.ttl"),
        0);
}

TEST(Lv2Tools, Lv2infoReadsThePlugin) {
    if (!isInstalled("lv2info")) {
        GTEST_SKIP() << "no lilv-utils";
    }
    EXPECT_EQ(run(std::string("lv2info ") + lv2::kPluginUri), 0);
}

TEST(Lv2Tools, Lv2benchRunsThePlugin) {
    if (ZELVATONE_SANITIZED) {
        GTEST_SKIP() << "lv2bench is linked without the sanitizers' runtimes";
    }
    if (!isInstalled("lv2bench")) {
        GTEST_SKIP() << "no lilv-utils";
    }
    EXPECT_EQ(run(std::string("lv2bench ") + lv2::kPluginUri), 0);
}

} // namespace
} // namespace zelvatone::test
