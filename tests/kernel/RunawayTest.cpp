// Programs whose frequencies run away, held until most of them are infinite.
#include "tests/kernel/EngineState.h"
#include "tests/kernel/Kernels.h"
#include "tests/kernel/PrintedLines.h"

#include <algorithm>
#include <array>

using namespace zelvatone;

namespace {

constexpr std::int32_t kBlock = 480;
constexpr std::int32_t kSampleRate = 48000;
constexpr std::int32_t kBlocks = 20 * kSampleRate / kBlock;

class Player {
public:
    Player(Renderer renderer, std::int32_t program) : engine(renderer) {
        engine.setSampleRate(static_cast<float>(kSampleRate));
        engine.setProgram(program);
        play();
        engine.noteOn(60, 100);
    }

    void play() {
        std::array<float*, 2> outputs = {left.data(), right.data()};
        engine.render(nullptr, outputs.data(), kBlock);
    }

    ZelvatoneEngine engine;
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
};

class RunawayPrograms : public EachKernel {
protected:
    // Holds a note for 20 seconds; returns how many lines the reference renderer has printed.
    std::ptrdiff_t holdNote(std::int32_t program) {
        Player reference(Renderer::kReference, program);
        Player fast(GetParam(), program);
        std::ptrdiff_t lines = 0;
        for (int block = 0; block < kBlocks && !HasFailure(); ++block) {
            reference.play();
            const std::string expectedLines = printed_.take();
            fast.play();
            EXPECT_EQ(printed_.take(), expectedLines) << "block " << block;
            EXPECT_EQ(differenceInSamples(reference.left.data(), fast.left.data(), kBlock), "")
                << "block " << block;
            EXPECT_EQ(differenceInState(reference.engine, fast.engine), "") << "block " << block;
            lines += std::count(expectedLines.begin(), expectedLines.end(), '\n');
        }
        return lines;
    }

    PrintedLines printed_;
};

TEST_P(RunawayPrograms, LaserShotsSoundTheSameAndPrintALineAModeAtMost) {
    const std::ptrdiff_t lines = holdNote(16);
    EXPECT_GT(lines, 10);
    EXPECT_LE(lines, kMaxModeCount);
}

TEST_P(RunawayPrograms, RobobassSoundsTheSameAndPrintsNothing) {
    EXPECT_EQ(holdNote(26), 0);
}

ZELVATONE_FOR_EACH_KERNEL(RunawayPrograms);

} // namespace
