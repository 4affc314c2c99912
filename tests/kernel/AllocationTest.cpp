// Rendering takes no memory but for its list of the program's parameters.
#include "engine/ZelvatoneEngine.h"
#include "params/ParameterTable.h"
#include "tests/engine/CountingNew.h"
#include "tests/kernel/Kernels.h"

#include <array>

using namespace zelvatone;
using zelvatone::test::allocationCounts;

namespace {

constexpr std::int32_t kNoteOn = 0x90;
constexpr std::int32_t kNoteOff = 0x80;
constexpr std::int32_t kPitchBend = 0xE0;

class Allocations : public EachKernel {
protected:
    void set(ParameterIndex index, float units) {
        engine_.currentProgram->parameters[index]->setValue(units);
    }
    std::size_t allocationsInBlock() {
        std::array<float, 512> left{};
        std::array<float, 512> right{};
        std::array<float*, 2> outputs = {left.data(), right.data()};
        const test::AllocationCounts before = allocationCounts();
        engine_.render(nullptr, outputs.data(), 512);
        return allocationCounts().since(before).allocations;
    }

    ZelvatoneEngine engine_{GetParam()};
};

TEST_P(Allocations, AreOneABlockThroughNotesShiftsBendsAndKnobs) {
    set(kShiftInterval, -5.0F);
    set(kModeShift, 3.0F);
    set(kExitPeel, 0.5F);
    for (std::int32_t block = 0; block < 100; ++block) {
        engine_.processMidi(kNoteOn, 40 + block % 30, 100, block % 512);
        engine_.processMidi(kNoteOff, 40 + block * 7 % 30, 0, 100);
        engine_.processMidi(kPitchBend, 0, block % 128, 300);
        set(kFalloff, -0.03F * static_cast<float>(block));
        set(kFreqDrop, static_cast<float>(block % 5 - 2));
        set(kMaxModes, static_cast<float>(block));
        EXPECT_EQ(allocationsInBlock(), 1U) << "block " << block;
    }
}

// The table keeps its size, so its storage stays.
TEST_P(Allocations, AreNoMoreWithANewWave) {
    engine_.processMidi(kNoteOn, 60, 100, 0);
    for (const float wave : {1.0F, 2.0F, 3.0F, 4.0F, 0.0F}) {
        set(kWave, wave);
        set(kCrush, wave + 1.0F);
        EXPECT_EQ(allocationsInBlock(), 1U) << "wave " << wave;
    }
}

ZELVATONE_FOR_EACH_KERNEL(Allocations);

} // namespace
