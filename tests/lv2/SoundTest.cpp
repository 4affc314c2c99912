// The bundle's sound beside that of the VST 2.4 file: the same bits.
#include "params/ParameterTable.h"
#include "tests/lv2/HostedLv2.h"
#include "tests/plugin/LoadedPlugin.h"

#include <algorithm>
#include <random>

namespace zelvatone::test {
namespace {

constexpr int kPrograms = 42;
constexpr std::int32_t kPhrase = 22050; // samples, half a second

// One host block: values that change before it, and what happens in it.
struct Block {
    std::int32_t frames;
    std::vector<std::pair<std::int32_t, float>> automation; // parameter, 0 to 1
    std::vector<Lv2Event> events;                           // by ascending frames
};

// A performance that differs with `seed`: notes, bends, automation and changes of the tempo, in
// blocks of all sizes.
class Performer {
public:
    explicit Performer(unsigned seed) : random_(seed) {}

    Block next() {
        Block block{.frames = below(700) + 1, .automation = {}, .events = {}};
        if (below(3) == 0) {
            block.automation.emplace_back(below(kReserved), static_cast<float>(below(1001)) / 1000);
        }
        for (int i = below(5); i > 0; --i) {
            block.events.push_back(event(below(block.frames)));
        }
        std::ranges::stable_sort(block.events, {}, &Lv2Event::frame);
        return block;
    }

private:
    int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }
    std::uint8_t data() { return static_cast<std::uint8_t>(below(128)); }

    Lv2Event event(std::int64_t frame) {
        const auto channel = static_cast<std::uint8_t>(below(16));
        const auto note = static_cast<std::uint8_t>(36 + below(24));
        switch (below(4)) {
        case 0: // whole numbers, which are the same as floats
            return {.frame = frame, .tempo = 60.0 + below(240)};
        case 1:
            return {.frame = frame,
                    .midi = {static_cast<std::uint8_t>(0xE0 | channel), data(), data()}};
        case 2:
            return {.frame = frame, .midi = {static_cast<std::uint8_t>(0x80 | channel), note, 0}};
        default:
            return {.frame = frame,
                    .midi = {static_cast<std::uint8_t>(0x90 | channel), note, data()}};
        }
    }

    std::mt19937 random_;
};

void append(StereoBlock& all, const StereoBlock& part) {
    all.left.insert(all.left.end(), part.left.begin(), part.left.end());
    all.right.insert(all.right.end(), part.right.begin(), part.right.end());
}

// A host of the VST 2.4 file can tell a tempo only between blocks: it ends one where the tempo
// changes.
class Vst {
public:
    explicit Vst(int program) {
        plugin_.ask(effSetSampleRate, 0, 0, nullptr, 44100);
        plugin_.ask(effSetProgram, 0, program);
    }

    void automate(std::int32_t parameter, float value) { plugin_.setParameter(parameter, value); }

    StereoBlock render(const Block& block) {
        StereoBlock all;
        std::int32_t start = 0;
        std::vector<MidiMessage> messages;
        const auto renderTo = [&](std::int32_t end) {
            plugin_.send(messages);
            messages.clear();
            append(all, plugin_.render(end - start));
            start = end;
        };
        for (const Lv2Event& event : block.events) {
            const auto frame = static_cast<std::int32_t>(event.frame);
            if (event.tempo == 0) {
                messages.push_back({event.midi[0], event.midi[1], event.midi[2], frame - start});
                continue;
            }
            if (event.tempo != time_.tempo && frame > start) {
                renderTo(frame);
            }
            time_ = timeWithTempo(event.tempo);
            host_.setTime(&time_);
        }
        renderTo(block.frames);
        return all;
    }

private:
    RecordingHost host_;
    LoadedPlugin plugin_;
    VstTimeInfo time_ = timeWithTempo(120);
};

// The value in units that the VST 2.4 file makes of `normalised`.
float unitsOf(std::int32_t parameter, float normalised) {
    static const SynthProgram program = makeDefaultProgram();
    SynthParameter& units = *program.parameters.at(parameter);
    units.setValue(units.toUnits(units.min, units.max, normalised));
    return units.value;
}

class Lv2Program : public testing::TestWithParam<int> {};

TEST_P(Lv2Program, HasTheBitsOfTheVst24File) {
    Vst vst(GetParam());
    HostedLv2 lv2;
    lv2.restore(Lv2Bundle::get().preset(GetParam()).get());
    Performer performer(static_cast<unsigned>(GetParam()));
    float peak = 0;
    for (std::int32_t done = 0; done < kPhrase;) {
        const Block block = performer.next();
        for (const auto& [parameter, value] : block.automation) {
            vst.automate(parameter, value);
            lv2.port(lv2::portOf(parameter)) = unitsOf(parameter, value);
        }
        const StereoBlock expected = vst.render(block);
        ASSERT_TRUE(lv2.render(block.frames, block.events) == expected) << "after " << done;
        peak = std::max(peak, expected.peak());
        done += block.frames;
    }
    EXPECT_GT(peak, 0.001F); // there was something to compare
}

INSTANTIATE_TEST_SUITE_P(All, Lv2Program, testing::Range(0, kPrograms));

TEST(Lv2Sound, KeepsTheTempoUntilThePositionTellsAnother) {
    // A shift every quarter of a beat: the tempo is heard.
    const auto play = [](const std::vector<Lv2Event>& first, double tempo) {
        HostedLv2 lv2;
        lv2.port(lv2::portOf(kModeShift)) = 3;
        lv2.port(lv2::portOf(kShiftInterval)) = -2;
        std::vector<Lv2Event> events = first;
        events.push_back({.frame = 0, .midi = {0x90, 45, 100}});
        if (tempo != 0) {
            events.insert(events.begin(), Lv2Event{.frame = 0, .tempo = tempo});
        }
        StereoBlock sound = lv2.render(4000, events);
        append(sound, lv2.render(4000)); // nothing is said here
        append(sound, lv2.render(14000));
        return sound;
    };
    EXPECT_TRUE(play({}, 0) == play({}, 120)); // what holds before the first position
    EXPECT_FALSE(play({}, 240) == play({}, 120));
}

TEST(Lv2Sound, IsSilentWhenTheHostDisablesIt) {
    HostedLv2 lv2;
    lv2.port(lv2::kEnabledPort) = 0;
    const std::vector<Lv2Event> note{{.frame = 0, .midi = {0x90, 69, 127}}};
    EXPECT_EQ(lv2.render(20000, note).peak(), 0.0F);
    lv2.port(lv2::kEnabledPort) = 1;
    EXPECT_GT(lv2.render(20000, note).peak(), 0.0F);
}

TEST(Lv2Sound, StopsWhenTheHostActivatesAgain) {
    HostedLv2 lv2;
    lv2.render(10000, {{.frame = 0, .midi = {0x90, 69, 127}}});
    lilv_instance_deactivate(lv2.instance());
    lilv_instance_activate(lv2.instance());
    EXPECT_EQ(lv2.render(1000).peak(), 0.0F);
}

TEST(Lv2Sound, HearsTheSustainPedal) {
    const auto peakAfterRelease = [](std::uint8_t pedal) {
        HostedLv2 lv2;
        lv2.render(20000, {{.frame = 0, .midi = {0xB0, 64, pedal}},
                           {.frame = 1, .midi = {0x90, 69, 127}},
                           {.frame = 10000, .midi = {0x80, 69, 0}}});
        lv2.render(30000); // longer than the default release of 0.3 s
        return lv2.render(2000).peak();
    };
    EXPECT_EQ(peakAfterRelease(0), 0.0F);
    EXPECT_GT(peakAfterRelease(127), 0.0F);
}

TEST(Lv2Sound, TakesSevenBitsOfEveryDataByte) {
    const auto play = [](std::uint8_t note, std::uint8_t velocity) {
        return HostedLv2().render(4000, {{.frame = 0, .midi = {0xB0, 64, velocity}},
                                         {.frame = 1, .midi = {0x90, note, velocity}},
                                         {.frame = 2000, .midi = {0x80, note, velocity}}});
    };
    EXPECT_TRUE(play(69 | 0x80, 100 | 0x80) == play(69, 100));
}

TEST(Lv2Sound, TakesOverPortsInABlockWithoutSamples) {
    HostedLv2 lv2;
    EXPECT_TRUE(lv2.render(0).left.empty());
    EXPECT_EQ(lv2.render(64).peak(), 0.0F);
}

} // namespace
} // namespace zelvatone::test
