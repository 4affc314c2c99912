// The kernels that a test is run for.
#pragma once

#include "tests/kernel/Scenario.h"

#include "engine/fast/KernelChoice.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace zelvatone {

// How the framework names a test's renderer.
inline void PrintTo(Renderer renderer, std::ostream* out) {
    *out << nameOf(renderer);
}

} // namespace zelvatone

// A test for each fast renderer that this processor has.
class EachKernel : public testing::TestWithParam<zelvatone::Renderer> {
protected:
    const zelvatone::ModeKernel& kernel() const { return *zelvatone::kernelOf(GetParam()); }
};

// Instantiates `Suite`, which derives from EachKernel.
#define ZELVATONE_FOR_EACH_KERNEL(Suite)                                                           \
    INSTANTIATE_TEST_SUITE_P(Kernel, Suite, testing::ValuesIn(renderersUnderTest()),               \
                             [](const auto& test) { return std::string(nameOf(test.param)); })
