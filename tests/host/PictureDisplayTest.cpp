// The display that pictures are taken on where there is none.
#include "host/window/PictureDisplay.h"

#include <xcb/xcb.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace zelvatone {
namespace {

bool canConnect() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isConnected = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isConnected;
}

TEST(PictureDisplay, OwnDisplayLetsInWhoHasItsCookieOnly) {
    unsetenv("DISPLAY");
    setenv("XAUTHORITY", "/dev/null", 1);
    {
        const PictureDisplay display;
        EXPECT_TRUE(canConnect());
        const std::string cookie = std::getenv("XAUTHORITY");
        setenv("XAUTHORITY", "/dev/null", 1);
        EXPECT_FALSE(canConnect());
        setenv("XAUTHORITY", cookie.c_str(), 1);
    }
    EXPECT_EQ(std::getenv("DISPLAY"), nullptr);
    EXPECT_STREQ(std::getenv("XAUTHORITY"), "/dev/null");
}

} // namespace
} // namespace zelvatone
