#include "host/audio/SampleSpool.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SampleSpool, ReadsWhatWasWrittenInAnyPieces) {
    const TemporaryFolder folder;
    SampleSpool spool(folder / "a.wav");
    spool.write(std::array{0.1F, -0.2F, 3.0F});
    spool.write(std::array{4.0F});
    spool.rewind();
    std::array<float, 3> buffer{};
    EXPECT_THAT(spool.read(buffer), ElementsAre(0.1F, -0.2F, 3.0F));
    EXPECT_THAT(spool.read(buffer), ElementsAre(4.0F));
    EXPECT_THAT(spool.read(buffer), IsEmpty());
}

TEST(SampleSpool, LeavesNothingBehind) {
    const TemporaryFolder folder;
    {
        SampleSpool spool(folder / "a.wav");
        spool.write(std::array{0.5F});
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

} // namespace
} // namespace zelvatone
