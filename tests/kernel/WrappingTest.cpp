// Phases come back into the cycle by sums of floats, where the rule speaks of doubles.
#include "tests/kernel/Kernels.h"
#include "tests/kernel/TestBank.h"
#include "tests/kernel/WrappedPhases.h"

#include <cmath>
#include <limits>

using namespace zelvatone;

namespace {

class Wrapping : public EachKernel {};

TEST_P(Wrapping, AgreesWithDoublePrecisionAllOverTheRange) {
    // A prime stride, so that no pattern of low bits is left out.
    EXPECT_EQ(firstWrongWrap(kernel(), 0.0F, std::numeric_limits<float>::max(), 4099), "");
}

TEST_P(Wrapping, AgreesWithDoublePrecisionAroundEveryWholeTurn) {
    for (int turns = 1; turns < 4000; turns += turns < 20 ? 1 : 37) {
        const auto centre = static_cast<float>(turns * 6.2831854820251465);
        EXPECT_EQ(firstWrongWrap(kernel(), centre - 1e-4F * centre, centre + 1e-4F * centre, 1), "")
            << turns;
    }
}

TEST_P(Wrapping, LeavesAZeroWithTheSignOfAnExactMultiple) {
    TestBank bank(32);
    bank.turn(1.0F);
    for (int i = 0; i < 32; i += 2) {
        bank.freq[i] = std::ldexp(6.2831855F, 4 * i + 1);
        bank.freq[i + 1] = -bank.freq[i];
    }
    kernel().advance(bank.segment(), bank.constants);
    for (int i = 0; i < 32; ++i) {
        EXPECT_EQ(std::abs(bank.phase[i]), 0.0F) << i;
        EXPECT_EQ(std::signbit(bank.phase[i]), i % 2 == 1) << i;
    }
}

TEST_P(Wrapping, MakesNotANumberOfWhatIsNotFinite) {
    TestBank bank(32);
    bank.turn(1.0F);
    bank.freq[3] = std::numeric_limits<float>::infinity();
    bank.freq[17] = -std::numeric_limits<float>::infinity();
    bank.freq[20] = std::numeric_limits<float>::quiet_NaN();
    bank.freq[21] = 1.0e30F; // beside it
    kernel().advance(bank.segment(), bank.constants);
    for (int i = 0; i < 32; ++i) {
        EXPECT_EQ(std::isnan(bank.phase[i]), i == 3 || i == 17 || i == 20) << i;
    }
    EXPECT_EQ(bank.phase[21], remainderInIntegers(1.0e30F));
}

// The independent route of the tests above, checked in turn.
TEST(RemainderInIntegers, IsThatOfTheLibrary) {
    for (double phase = 4.0; phase < 3.0e38; phase *= 1.0013) {
        const auto p = static_cast<float>(phase);
        const auto expected = static_cast<float>(std::fmod(double{p}, 6.2831854820251465));
        ASSERT_EQ(remainderInIntegers(p), expected) << p;
        ASSERT_EQ(remainderInIntegers(-p), -expected) << p;
    }
}

ZELVATONE_FOR_EACH_KERNEL(Wrapping);

} // namespace
