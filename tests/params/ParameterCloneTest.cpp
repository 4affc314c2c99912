// Copies of parameters.
#include "params/SynthParameter.h"
#include "tests/params/ParameterHandle.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace zelvatone {
namespace {

using test::ParameterHandle;

template<class Kind>
class Clone : public ::testing::Test {};

using Kinds = ::testing::Types<SynthParameter, PercentSynthParameter, IntegerSynthParameter,
                               WaveSynthParameter, BeatsSynthParameter>;
TYPED_TEST_SUITE(Clone, Kinds);

TYPED_TEST(Clone, HasTheSameKindAndEveryField) {
    TypeParam original("Crush", "bits", -2.0F, 8.0F, 1.0F);
    original.setValue(3.0F);
    const ParameterHandle clone(original.clone());
    const SynthParameter& copy = *clone;
    EXPECT_EQ(typeid(copy), typeid(TypeParam));
    EXPECT_EQ(copy.toUnits, original.toUnits);
    EXPECT_EQ(copy.toNormalised, original.toNormalised);
    EXPECT_EQ(copy.name, "Crush");
    EXPECT_EQ(copy.label, "bits");
    EXPECT_EQ(copy.max, 8.0F);
    EXPECT_EQ(copy.min, -2.0F);
    EXPECT_EQ(copy.defaultValue, 1.0F);
    EXPECT_EQ(copy.value, 3.0F);
    EXPECT_EQ(copy.getDisplay(), original.getDisplay());
}

TYPED_TEST(Clone, SharesNothingWithTheOriginal) {
    TypeParam original("Crush", "bits", -2.0F, 8.0F, 1.0F);
    const ParameterHandle clone(original.clone());
    original.setValue(5.0F);
    original.name = "Renamed";
    EXPECT_EQ(clone->value, 1.0F);
    EXPECT_EQ(clone->name, "Crush");
}

TEST(CloneOfAClone, KeepsExchangedMappings) {
    const IntegerSynthParameter whole("Whole", "", 0.0F, 4.0F, 0.0F);
    SynthParameter plain("Plain", "", 0.0F, 4.0F, 0.0F);
    plain.toUnits = whole.toUnits;
    const ParameterHandle first(plain.clone());
    const ParameterHandle second(first->clone());
    EXPECT_EQ(second->toUnits(0.0F, 4.0F, 0.4F), 1.0F);
}

} // namespace
} // namespace zelvatone
