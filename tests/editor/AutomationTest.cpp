// The host sets parameters: what the editor shows.
#include "tests/editor/EditorFixture.h"

#include <cmath>
#include <limits>

namespace zelvatone::test {
namespace {

constexpr int kAttack = 18, kReserved = 22;
// 0.01 s to 2 s: what 0.2 s and 1 s are as fractions of the range.
constexpr float kShort = 0.19F / 1.99F, kLong = 0.99F / 1.99F;

class EditorAutomation : public EditorTest {};

TEST_F(EditorAutomation, MovesTheKnobButLeavesTheTextBehind) {
    ASSERT_TRUE(openEditor());
    const Screenshot oldText = displayOf(kAttack);
    plugin->setParameter(kAttack, kLong);
    EXPECT_TRUE(idleUntilFrame(kAttack, 14));
    idleAWhile();
    EXPECT_TRUE(areAlike(displayOf(kAttack), oldText));
    // The next refresh shows the new text.
    const Screenshot newText = freshDisplayOf(kAttack);
    EXPECT_FALSE(areAlike(newText, oldText));
}

TEST_F(EditorAutomation, ShowsAtEachChangeTheTextOfTheValueBefore) {
    ASSERT_TRUE(openEditor());
    plugin->setParameter(kAttack, kLong);
    plugin->setParameter(kAttack, kShort);
    EXPECT_TRUE(idleUntilFrame(kAttack, 2));
    idleAWhile();
    const Screenshot shown = displayOf(kAttack);
    plugin->setParameter(kAttack, kLong);
    EXPECT_TRUE(areAlike(freshDisplayOf(kAttack), shown));
}

TEST_F(EditorAutomation, TellsTheHostNothingBack) {
    ASSERT_TRUE(openEditor());
    plugin->setParameter(kAttack, kLong);
    plugin->setProgram(5);
    idleAWhile();
    EXPECT_TRUE(plugin->calls.empty());
}

TEST_F(EditorAutomation, ShowsNothingOfTheReservedParameter) {
    ASSERT_TRUE(openEditor());
    idleAWhile();
    const Screenshot before = look();
    plugin->setParameter(kReserved, 0.75F);
    idleAWhile();
    EXPECT_TRUE(areAlike(look(), before));
    EXPECT_EQ(plugin->parameter(kReserved), 0.75F);
}

TEST_F(EditorAutomation, KeepsTheKnobAtAFractionThatTheParameterRoundsDown) {
    constexpr int kMaxModes = 3; // whole numbers, 0 to 100
    ASSERT_TRUE(openEditor());
    plugin->setParameter(kMaxModes, 0.5F / 29 + 20.F / 29); // between two of the knob's pictures
    EXPECT_TRUE(idleUntilFrame(kMaxModes, 20));
}

TEST_F(EditorAutomation, IgnoresAParameterThatIsNotThere) {
    ASSERT_TRUE(openEditor());
    idleAWhile();
    const Screenshot before = look();
    plugin->setParameter(-1, 0.75F);
    plugin->setParameter(1000, 0.75F);
    idleAWhile();
    EXPECT_TRUE(areAlike(look(), before));
}

TEST_F(EditorAutomation, TurnsTheKnobToItsEndForValuesOutsideTheRange) {
    ASSERT_TRUE(openEditor());
    plugin->setParameter(kAttack, 7.F);
    EXPECT_TRUE(idleUntilFrame(kAttack, 29));
    plugin->setParameter(kAttack, -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(idleUntilFrame(kAttack, 0));
    plugin->setParameter(kAttack, 1.F);
    EXPECT_TRUE(idleUntilFrame(kAttack, 29));
    plugin->setParameter(kAttack, std::numeric_limits<float>::quiet_NaN());
    idleAWhile();
    plugin->setParameter(kAttack, 1.F);
    EXPECT_TRUE(idleUntilFrame(kAttack, 29));
}

TEST_F(EditorAutomation, ShowsWhenTheEditorOpensWhatCameBefore) {
    plugin->setParameter(kAttack, kLong);
    ASSERT_TRUE(openEditor());
    EXPECT_EQ(frameOf(kAttack), 14);
}

TEST_F(EditorAutomation, ShowsWhenTheEditorOpensAgainWhatCameWhileItWasClosed) {
    ASSERT_TRUE(openEditor());
    plugin->closeEditor();
    plugin->setParameter(kAttack, kLong);
    plugin->idle();
    ASSERT_TRUE(openEditor());
    EXPECT_EQ(frameOf(kAttack), 14);
}

} // namespace
} // namespace zelvatone::test
