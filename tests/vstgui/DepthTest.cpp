// Servers and hosts with other pixels than 24 bits.
#include "tests/vstgui/Fixtures.h"

namespace VSTGUI::test {
namespace {

class Depth : public ToolkitTest, public testing::WithParamInterface<int> {};

TEST_P(Depth, ShowsTheSameColors) {
    if (const std::string why = XServer::start(GetParam()); !why.empty()) {
        GTEST_SKIP() << why;
    }
    HostWindow host;
    auto* frame = new CFrame(kFrameSize, nullptr);
    frame->setBackgroundColor(kRedCColor);
    ASSERT_TRUE(frame->open(host.handle()));
    for (int idle = 0; idle < 1000 && host.pixel(716, 476) != 0xff0000; ++idle) {
        frame->idle();
    }
    EXPECT_EQ(host.pixel(0, 0), 0xff0000U);
    EXPECT_EQ(host.pixel(333, 222), 0xff0000U);
    EXPECT_EQ(host.pixel(716, 476), 0xff0000U);
    frame->close();
}

// A pixel that is not opaque would let the desktop shine through.
TEST(DepthOfHost, MayIncludeOpacityWhichIsFull) {
    if (const std::string why = XServer::start(); !why.empty()) {
        GTEST_SKIP() << why;
    }
    init(nullptr);
    HostWindow host(Host::kTranslucent);
    auto* frame = new CFrame(kFrameSize, nullptr);
    const auto glass = owned(
        makePicture(717, 477, [](int x, int) { return CColor(0, 0, 255, x < 300 ? 0 : 255); }));
    frame->setBackground(glass);
    ASSERT_TRUE(frame->open(host.handle()));
    for (int idle = 0; idle < 1000 && host.rawChildPixel(716, 476) != 0xff0000ff; ++idle) {
        frame->idle();
    }
    EXPECT_EQ(host.rawChildPixel(716, 476), 0xff0000ffU);
    EXPECT_EQ(host.rawChildPixel(10, 10), 0xff000000U);
    frame->close();
    exit();
}

INSTANTIATE_TEST_SUITE_P(Bits, Depth, testing::Values(16, 24));

} // namespace
} // namespace VSTGUI::test
