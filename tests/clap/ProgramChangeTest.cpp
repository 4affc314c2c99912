// Program changes set the parameters, and the host hears of it.
#include "params/FactoryPrograms.h"
#include "tests/clap/InstanceFixture.h"

namespace zelvatone::test {

namespace {

using ClapPrograms = ClapTest;

TEST_F(ClapPrograms, EveryProgramSetsItsValuesAndTellsThem) {
    const ProgramBank bank = makeFactoryBank();
    ASSERT_EQ(bank.size(), 42U);
    for (std::uint8_t program = 0; program < 42; ++program) {
        sent_.events.clear();
        events_.add(midi(5, 0xC0, program, 0));
        play(16);
        ASSERT_EQ(sent_.events.size(), 22U);
        for (std::uint32_t id = 0; id < 22; ++id) {
            const double wanted = bank[program].parameters[id]->value;
            EXPECT_EQ(value(id), wanted) << int{program} << ' ' << id;
            EXPECT_EQ(sent_.events[id].param, id);
            EXPECT_EQ(sent_.events[id].value, wanted);
            EXPECT_EQ(sent_.events[id].time, 5U);
        }
    }
}

TEST_F(ClapPrograms, HostReadsTheValuesAgainAndKeepsTheSession) {
    events_.add(midi(0, 0xC0, 7, 0));
    play(16);
    EXPECT_EQ(instance_.rescans, 0U) << "that is the main thread's";
    EXPECT_TRUE(instance_.runCallbacks());
    EXPECT_EQ(instance_.rescans, clap::kRescanValues);
    EXPECT_EQ(instance_.dirtyMarks, 1);
}

TEST_F(ClapPrograms, ProgramThatDoesNotExistIsIgnored) {
    events_.add(midi(0, 0xC0, 42, 0));
    play(16);
    EXPECT_TRUE(sent_.events.empty());
    EXPECT_FALSE(instance_.runCallbacks());
}

} // namespace

} // namespace zelvatone::test
