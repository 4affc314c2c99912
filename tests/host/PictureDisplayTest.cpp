// The display that pictures are taken on where there is none.
#include "host/window/PictureDisplay.h"

#include <xcb/xcb.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace zelvatone {
namespace {

bool canConnect() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isConnected = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isConnected;
}

// NOLINTBEGIN(concurrency-mt-unsafe): this program has one thread
std::string valueOf(const char* variable) {
    const char* value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

TEST(PictureDisplay, OwnDisplayAcceptsItsCookieOnly) {
    unsetenv("DISPLAY");
    setenv("XAUTHORITY", "/dev/null", 1);
    {
        const PictureDisplay display;
        EXPECT_TRUE(canConnect());
        const std::string cookie = valueOf("XAUTHORITY");
        setenv("XAUTHORITY", "/dev/null", 1);
        EXPECT_FALSE(canConnect());
        setenv("XAUTHORITY", cookie.c_str(), 1);
    }
    EXPECT_EQ(valueOf("DISPLAY"), "");
    EXPECT_EQ(valueOf("XAUTHORITY"), "/dev/null");
}
// NOLINTEND(concurrency-mt-unsafe)

} // namespace
} // namespace zelvatone
