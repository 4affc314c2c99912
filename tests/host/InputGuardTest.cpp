#include "host/files/InputGuard.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;

class InputGuard : public ::testing::Test {
protected:
    InputGuard() { writeText(song_, "song"); }

    std::string refusalOf(const std::vector<std::filesystem::path>& outputs) const {
        try {
            checkOutputs(outputs, {song_});
        } catch (const InputError& error) {
            return error.what();
        }
        return "accepted";
    }

    const TemporaryFolder folder_;
    const std::filesystem::path song_ = folder_ / "song.mid";
};

TEST_F(InputGuard, OutputOfAnyOtherNameIsAccepted) {
    writeText(folder_ / "old.wav", "before");
    EXPECT_EQ(refusalOf({folder_ / "new.wav", folder_ / "old.wav"}), "accepted");
    EXPECT_EQ(refusalOf({folder_ / "no folder" / "new.wav"}), "accepted");
}

TEST_F(InputGuard, OutputThatIsTheInputIsRefusedUnderEveryName) {
    std::filesystem::create_symlink("song.mid", folder_ / "soft.wav");
    std::filesystem::create_hard_link(song_, folder_ / "hard.wav");
    EXPECT_THAT(refusalOf({folder_ / "." / "song.mid"}), HasSubstr("song.mid, which is read"));
    EXPECT_THAT(refusalOf({folder_ / "a.wav", folder_ / "soft.wav"}),
                HasSubstr("soft.wav: it is the same file as"));
    EXPECT_THAT(refusalOf({folder_ / "hard.wav"}), HasSubstr("hard.wav: it is the same file as"));
}

TEST_F(InputGuard, TwoOutputsIntoOneFileAreRefused) {
    EXPECT_THAT(refusalOf({folder_ / "a.wav", folder_ / "." / "a.wav"}), HasSubstr("a.wav twice"));
}

} // namespace
} // namespace zelvatone
