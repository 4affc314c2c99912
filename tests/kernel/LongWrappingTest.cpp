// Every finite float.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/WrappedPhases.h"

#include <limits>

namespace {

class LongWrapping : public EachKernel {};

TEST_P(LongWrapping, AgreesWithDoublePrecisionForEveryFloat) {
    EXPECT_EQ(firstWrongWrap(kernel(), 0.0F, std::numeric_limits<float>::max(), 1), "");
}

ZELVATONE_FOR_EACH_KERNEL(LongWrapping);

} // namespace
