#include "engine/fast/KernelChoice.h"

#include "engine/ZelvatoneEngine.h"

#include <gtest/gtest.h>

using namespace zelvatone;

namespace {

TEST(KernelChoice, NeedsNoKernelForTheReferenceRenderer) {
    EXPECT_EQ(kernelOf(Renderer::kReference), nullptr);
    EXPECT_STREQ(nameOf(Renderer::kReference), "reference");
}

TEST(KernelChoice, HasAKernelForEachWidth) {
    EXPECT_EQ(kernelOf(Renderer::kSse2)->lanes, 4);
    EXPECT_EQ(kernelOf(Renderer::kAvx2)->lanes, 8);
    EXPECT_EQ(kernelOf(Renderer::kAvx512)->lanes, 16);
}

TEST(KernelChoice, TakesTheWidestThatTheProcessorHas) {
    EXPECT_TRUE(isSupported(Renderer::kReference));
    EXPECT_TRUE(isSupported(Renderer::kSse2)); // every x86-64
    EXPECT_TRUE(isSupported(widestRenderer()));
    for (const Renderer renderer : kAllRenderers) {
        EXPECT_TRUE(renderer <= widestRenderer() || !isSupported(renderer)) << nameOf(renderer);
    }
}

} // namespace
