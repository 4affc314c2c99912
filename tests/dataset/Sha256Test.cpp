#include "dataset/Sha256.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zelvatone {
namespace {

// The examples of the standard, FIPS 180-4.
TEST(Sha256, GivesThePublishedDigests) {
    Sha256 sum;
    EXPECT_EQ(sum.take(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    sum.add({"abc", 3});
    EXPECT_EQ(sum.take(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    for (int i = 0; i < 1000; ++i) {
        sum.add(std::string(1000, 'a'));
    }
    EXPECT_EQ(sum.take(), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, DigestOfAFileIsThatOfItsBytes) {
    const TemporaryFolder folder;
    writeText(folder / "abc", "abc");
    EXPECT_EQ(sha256Of(folder / "abc"),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_THROW(sha256Of(folder / "missing"), InputError);
}

} // namespace
} // namespace zelvatone
