#include "dataset/LabelledSound.h"

#include "dataset/PlanText.h"
#include "host/midi/Song.h"
#include "host/plugin/Programs.h"
#include "host/render/InstrumentPlayer.h"
#include "host/text/Json.h"
#include "tests/support/SoundFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace zelvatone {
namespace {

DatasetPlan shortPlan(const std::string& programs) {
    DatasetPlan plan;
    plan.count = 10;
    plan.seconds = 0.25;
    plan.holdSeconds = 0.2;
    plan.programs = programsOf(programs);
    plan.notes = {57};
    plan.velocities = {96};
    return plan;
}

// The same note by the host, through the VST 2.4 file.
std::vector<float> throughThePlugin(const PluginLibrary& library, const DatasetPlan& plan,
                                    int program) {
    HostedPlugin plugin(library, {44100.0, 512});
    selectProgram(plugin, program);
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), plan.seconds, {}, {}};
    song.add(0.0, std::vector<std::uint8_t>{0x90, 57, 96});
    song.add(plan.holdSeconds, std::vector<std::uint8_t>{0x80, 57, 0});
    InstrumentPlayer player(plugin, song, scheduleEvents(song, 44100.0));
    std::vector<float> samples;
    while (static_cast<std::int64_t>(samples.size()) < plan.frames()) {
        std::vector<float> block(1024, 0.0F);
        player.renderBlock();
        player.addTo(block, 1.0F);
        for (std::size_t i = 0; i < block.size(); i += 2) {
            samples.push_back(block[i]);
        }
    }
    samples.resize(static_cast<std::size_t>(plan.frames()));
    return samples;
}

TEST(LabelledSound, HasTheSamplesOfThePlugin) {
    const PluginLibrary library(TEST_INSTRUMENT);
    for (const int program : programsOf("all")) {
        const DatasetPlan plan = shortPlan(std::to_string(program));
        EXPECT_EQ(renderSound(plan, recipeOf(plan, 0)), throughThePlugin(library, plan, program))
            << program;
    }
}

SoundFile fileOf(const LabelledSound& sound, const char* name) {
    const TemporaryFolder folder;
    writeText(folder / name, {sound.file.begin(), sound.file.end()});
    return readSoundFile(folder / name);
}

TEST(LabelledSound, WavHoldsEverySampleToTheBit) {
    const DatasetPlan plan = shortPlan("Organ");
    const SoundFile file = fileOf(makeSound(plan, 0), "a.wav");
    EXPECT_EQ(file.channels, 1);
    EXPECT_EQ(file.sampleRate, 44100);
    EXPECT_EQ(file.samples, renderSound(plan, recipeOf(plan, 0)));
}

TEST(LabelledSound, FlacHoldsTheNearestOf24Bits) {
    DatasetPlan plan = shortPlan("Organ");
    plan.isFlac = true;
    const LabelledSound sound = makeSound(plan, 0);
    const SoundFile file = fileOf(sound, "a.flac");
    const std::vector<float> samples = renderSound(plan, recipeOf(plan, 0));
    ASSERT_EQ(file.samples.size(), samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double wanted = std::clamp(static_cast<double>(samples[i]), -1.0, 1.0);
        ASSERT_NEAR(static_cast<double>(file.samples[i]), wanted, 0x1p-23) << i;
    }
}

// Several at once share no more than the time.
TEST(LabelledSound, SoundsAreTheSameAloneAndTogether) {
    DatasetPlan plan = shortPlan("all");
    plan.seconds = 0.5;
    plan.ranges = rangesOf("all");
    const std::vector<std::int64_t> numbers{7, 2, 5, 0, 9, 1};
    const std::vector<LabelledSound> sounds = makeSounds(plan, numbers);
    ASSERT_EQ(sounds.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const LabelledSound sound = makeSound(plan, numbers[i]);
        EXPECT_EQ(sounds[i].file, sound.file) << i;
        EXPECT_EQ(labelText(plan, sounds[i]), labelText(plan, sound)) << i;
    }
}

TEST(LabelledSound, LabelTellsEveryParameterInUnits) {
    const DatasetPlan plan = shortPlan("Organ");
    const LabelledSound sound = makeSound(plan, 3);
    const Json label = Json::parse(labelText(plan, sound));
    EXPECT_EQ(label.at("sound"), 3);
    EXPECT_EQ(label.at("program"), "Organ");
    EXPECT_EQ(label.at("note"), 57);
    EXPECT_EQ(label.at("units").size(), 22U);
    EXPECT_EQ(label.at("units").at("Attack").get<float>(), sound.recipe.values[kAttack]);
    const double attack = label.at("units").at("Attack").get<double>();
    EXPECT_NEAR(label.at("normalised").at("Attack").get<double>(), (attack - 0.01) / 1.99, 1e-6);
}

TEST(LabelledSound, PeakIsTheLargestSample) {
    const DatasetPlan plan = shortPlan("Organ");
    const std::vector<float> samples = renderSound(plan, recipeOf(plan, 0));
    float largest = 0.0F;
    for (const float sample : samples) {
        largest = std::max(largest, std::abs(sample));
    }
    const LabelledSound sound = makeSound(plan, 0);
    EXPECT_EQ(sound.level.peak, largest);
    EXPECT_FALSE(sound.isSilent);
}

TEST(LabelledSound, NoteThatIsNotHeldIsSilent) {
    DatasetPlan plan = shortPlan("Organ");
    plan.seconds = 0.5;
    plan.velocities = {1};
    plan.holdSeconds = 0.0;
    plan.ranges = rangesOf("Attack=1:1");
    EXPECT_TRUE(makeSound(plan, 0).isSilent);
}

} // namespace
} // namespace zelvatone
