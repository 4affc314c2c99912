#include "lv2/ui/ChildWindow.h"

#include <cstdlib>
#include <stdexcept>

namespace zelvatone::lv2 {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

} // namespace

ChildWindow::ChildWindow(xcb_window_t parent, std::int32_t width, std::int32_t height)
    : connection_(xcb_connect(nullptr, nullptr)), id_(xcb_generate_id(connection_.get())) {
    xcb_connection_t* connection = connection_.get();
    // What the parent has: depth, visual, and no background of its own.
    const xcb_void_cookie_t made = xcb_create_window_checked(
        connection, XCB_COPY_FROM_PARENT, id_, parent, 0, 0, static_cast<std::uint16_t>(width),
        static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
        0, nullptr);
    const std::unique_ptr<xcb_generic_error_t, Free> error(xcb_request_check(connection, made));
    if (xcb_connection_has_error(connection) != 0 || error != nullptr) {
        throw std::runtime_error("no window in that of the host");
    }
    xcb_map_window(connection, id_);
    xcb_flush(connection);
}

ChildWindow::~ChildWindow() {
    xcb_destroy_window(connection_.get(), id_); // without effect if the parent's end took it along
    // A reply comes when all before it is done.
    const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
}

} // namespace zelvatone::lv2
