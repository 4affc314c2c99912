// Every program at every sample rate, a short chord each.
#include "tests/kernel/EngineState.h"
#include "tests/kernel/Scenario.h"

#include <gtest/gtest.h>

#include <array>

using namespace zelvatone;

namespace {

constexpr std::int32_t kBlock = 480;

class Player {
public:
    Player(Renderer renderer, std::int32_t program, float rate) : engine(renderer) {
        engine.setSampleRate(rate);
        engine.setTempo(480.0F); // shifts come soon
        engine.setProgram(program);
        play();
        for (const std::int32_t note : {33, 57, 90}) {
            engine.noteOn(note, 100);
        }
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void play() {
        std::array<float*, 2> outputs = {left.data(), right.data()};
        engine.render(nullptr, outputs.data(), kBlock);
    }

    ZelvatoneEngine engine;
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
};

std::string firstDifference(const Player& reference, const Player& fast) {
    const std::string difference =
        differenceInSamples(reference.left.data(), fast.left.data(), kBlock);
    return difference.empty() ? differenceInState(reference.engine, fast.engine) : difference;
}

void expectSameChord(std::int32_t program, float rate) {
    Player reference(Renderer::kReference, program, rate);
    std::vector<std::unique_ptr<Player>> others;
    for (const Renderer renderer : renderersUnderTest()) {
        others.push_back(std::make_unique<Player>(renderer, program, rate));
    }
    for (int block = 0; block < 20; ++block) {
        if (block == 12) {
            reference.engine.noteOff(57);
        }
        reference.play();
        for (const auto& player : others) {
            if (block == 12) {
                player->engine.noteOff(57);
            }
            player->play();
            ASSERT_EQ(firstDifference(reference, *player), "") << "block " << block;
        }
    }
}

class EachProgram : public testing::TestWithParam<int> {};

TEST_P(EachProgram, SoundsTheSameToTheLastBitAtEverySampleRate) {
    for (const float rate : {22050.0F, 44100.0F, 48000.0F, 88200.0F, 96000.0F, 192000.0F}) {
        expectSameChord(GetParam(), rate);
        ASSERT_FALSE(HasFailure()) << rate;
    }
}

INSTANTIATE_TEST_SUITE_P(Number, EachProgram, testing::Range(0, 42));

TEST(EachProgram, IsAmongThoseTested) {
    EXPECT_EQ(ZelvatoneEngine().programs.size(), 42U);
}

} // namespace
