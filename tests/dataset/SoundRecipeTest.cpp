#include "dataset/SoundRecipe.h"

#include "dataset/Philox.h"
#include "dataset/PlanText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace zelvatone {
namespace {

DatasetPlan planOfAll() {
    DatasetPlan plan;
    plan.count = 1000;
    plan.seed = 0x0123456789ABCDEF;
    plan.programs = programsOf("all");
    plan.notes = numbersOf("--notes", "36-84", 0, 127);
    plan.velocities = {90, 100};
    plan.ranges = rangesOf("all");
    return plan;
}

// As docs/dataset.md says, by hand: word w of sound k is word w mod 4 of the block with the counter
// (k, 0, w / 4, 0) and the seed as the key.
std::uint32_t word(std::uint32_t number, std::uint32_t w) {
    return philox({number, 0, w / 4, 0}, {0x89ABCDEF, 0x01234567})[w % 4];
}

TEST(SoundRecipe, IsDrawnAsTheDocumentSays) {
    const DatasetPlan plan = planOfAll();
    for (const std::uint32_t number : {0U, 1U, 999U}) {
        const SoundRecipe recipe = recipeOf(plan, number);
        const auto share = [&](std::uint32_t w) { return word(number, w) / 4294967296.0; };
        EXPECT_EQ(recipe.isForTests, share(0) < 0.1);
        EXPECT_EQ(recipe.program, static_cast<int>(std::floor(42.0 * share(1))));
        EXPECT_EQ(recipe.note, 36 + static_cast<int>(std::floor(49.0 * share(2))));
        EXPECT_EQ(recipe.velocity, share(3) < 0.5 ? 90 : 100);
        EXPECT_EQ(recipe.values[kMaxModes], std::floor(101.0 * share(4 + kMaxModes)));
        const double low = 0.01F;
        EXPECT_EQ(recipe.values[kAttack],
                  static_cast<float>(low + share(4 + kAttack) * (2.0 - low)));
    }
}

TEST(SoundRecipe, DoesNotDependOnHowManySoundsThereAre) {
    DatasetPlan plan = planOfAll();
    const SoundRecipe before = recipeOf(plan, 5);
    plan.count = 6;
    EXPECT_EQ(recipeOf(plan, 5).values, before.values);
}

TEST(SoundRecipe, ParameterMoreToVaryChangesNoOther) {
    DatasetPlan plan = planOfAll();
    plan.ranges = rangesOf("Attack=0:1");
    const SoundRecipe one = recipeOf(plan, 5);
    plan.ranges = rangesOf("all");
    EXPECT_EQ(recipeOf(plan, 5).values[kAttack], one.values[kAttack]);
    EXPECT_EQ(recipeOf(plan, 5).note, one.note);
}

TEST(SoundRecipe, OneInTenIsForTests) {
    DatasetPlan plan = planOfAll();
    int tests = 0;
    for (int number = 0; number < 10000; ++number) {
        tests += recipeOf(plan, number).isForTests ? 1 : 0;
    }
    EXPECT_NEAR(tests, 1000, 5 * 30); // five times the spread of so many draws
}

TEST(SoundRecipe, EveryWholeValueOfARangeIsDrawn) {
    DatasetPlan plan = planOfAll();
    plan.ranges = rangesOf("Crush=0:8");
    std::set<float> drawn;
    for (int number = 0; number < 500; ++number) {
        drawn.insert(recipeOf(plan, number).values[kCrush]);
    }
    EXPECT_EQ(drawn.size(), 9U);
}

TEST(SoundRecipe, TableOverridesWhatIsDrawn) {
    DatasetPlan plan = planOfAll();
    const SoundRecipe drawn = recipeOf(plan, 1);
    plan.table = SoundTable(std::string_view("note,Attack\n1,0.5\n2,0.75\n"));
    const SoundRecipe recipe = recipeOf(plan, 1);
    EXPECT_EQ(recipe.note, 2);
    EXPECT_EQ(recipe.values[kAttack], 0.75F);
    EXPECT_EQ(recipe.program, drawn.program);
    EXPECT_EQ(recipe.values[kDecay], drawn.values[kDecay]);
}

} // namespace
} // namespace zelvatone
