// Phases come back into the cycle by sums of floats, where the rule speaks of doubles.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/WrappedPhases.h"

namespace {

class Wrapping : public EachKernel {};

TEST_P(Wrapping, AgreesWithDoublePrecisionAllOverTheRange) {
    // A prime stride, so that no pattern of low bits is left out.
    EXPECT_EQ(firstWrongWrap(kernel(), 0.0F, 1.0e30F, 4099), "");
}

TEST_P(Wrapping, AgreesWithDoublePrecisionAroundEveryWholeTurn) {
    for (int turns = 1; turns < 4000; turns += turns < 20 ? 1 : 37) {
        const auto centre = static_cast<float>(turns * 6.2831854820251465);
        EXPECT_EQ(firstWrongWrap(kernel(), centre - 1e-4F * centre, centre + 1e-4F * centre, 1), "")
            << turns;
    }
}

ZELVATONE_FOR_EACH_KERNEL(Wrapping);

} // namespace
