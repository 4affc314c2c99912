// Every float that vectors wrap.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/WrappedPhases.h"

namespace {

class LongWrapping : public EachKernel {};

TEST_P(LongWrapping, AgreesWithDoublePrecisionForEveryFloatWithinReach) {
    constexpr float kBeyondVectors = 30000.0F; // from here on, a kernel calls fmod itself
    EXPECT_EQ(firstWrongWrap(kernel(), 0.0F, kBeyondVectors, 1), "");
}

ZELVATONE_FOR_EACH_KERNEL(LongWrapping);

} // namespace
