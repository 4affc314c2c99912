// Targets from tables against targets from powers.
#include "engine/fast/ModeTargets.h"

#include "tests/kernel/Random.h"

#include <gtest/gtest.h>

using namespace zelvatone;

namespace {

void turnSomeKnob(VoiceSettings& settings, Random& random) {
    switch (random.below(6)) {
    case 0:
        settings.falloff = -3.0F * random.fraction();
        break;
    case 1:
        settings.parity = random.oneOf({-1.0F, 0.0F, 1.0F, 2.0F * random.fraction() - 1.0F});
        break;
    case 2:
        settings.jitterHz = 100.0F * random.fraction();
        break;
    case 3:
        settings.detune = 0.25F + random.fraction();
        break;
    case 4:
        settings.primePower = 2.0F * random.fraction();
        break;
    default:
        settings.primeModes = random.below(6);
        break;
    }
}

TEST(ModeTargets, AreThoseOfTheVoiceWhateverKnobWasTurnedLast) {
    Random random(5);
    VoiceSettings settings;
    ModeTargets targets(&settings);
    ModeVoice expected(&settings);
    ModeVoice actual(&settings);
    for (int i = 0; i < 2000; ++i) {
        turnSomeKnob(settings, random);
        expected.baseFreq = actual.baseFreq = 20.0F + 12000.0F * random.fraction();
        const std::int32_t count = random.below(kMaxModeCount + 1);
        expected.computeTargets(count);
        expected.normaliseTargets(count);
        targets.fill(actual, count);
        ASSERT_EQ(expected.targetAmp, actual.targetAmp) << i;
        ASSERT_EQ(expected.targetFreq, actual.targetFreq) << i;
    }
}

} // namespace
