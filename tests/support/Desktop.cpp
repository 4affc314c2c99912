#include "tests/support/Desktop.h"

#include <xcb/xcb_icccm.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace zelvatone {

namespace {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
template<typename Reply>
std::unique_ptr<Reply, FreeDeleter> own(Reply* reply) {
    return std::unique_ptr<Reply, FreeDeleter>(reply);
}

void waitUntil(const std::function<bool()>& isReached, const std::string& what) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!isReached()) {
        if (std::chrono::steady_clock::now() > limit) {
            throw std::runtime_error("waited in vain for " + what);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

std::vector<xcb_window_t> childrenOf(xcb_connection_t* connection, xcb_window_t window) {
    const auto tree =
        own(xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

} // namespace

Desktop::Desktop() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_.get()) != 0) {
        throw std::runtime_error("no X server");
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
}

std::optional<xcb_window_t> Desktop::find(const std::string& title) const {
    for (const xcb_window_t window : childrenOf(connection_.get(), root_)) {
        const auto name = own(xcb_get_property_reply(connection_.get(),
                                                     xcb_get_property(connection_.get(), 0, window,
                                                                      atom("_NET_WM_NAME"),
                                                                      atom("UTF8_STRING"), 0, 100),
                                                     nullptr));
        if (name &&
            title == std::string_view(
                         static_cast<char*>(xcb_get_property_value(name.get())),
                         static_cast<std::size_t>(xcb_get_property_value_length(name.get())))) {
            return window;
        }
    }
    return {};
}

xcb_window_t Desktop::windowCalled(const std::string& title) const {
    std::optional<xcb_window_t> window;
    waitUntil([&] { return (window = find(title)).has_value(); }, "the window " + title);
    return *window;
}

xcb_window_t Desktop::windowInside(xcb_window_t parent) const {
    std::vector<xcb_window_t> inside;
    waitUntil([&] { return !(inside = childrenOf(connection_.get(), parent)).empty(); },
              "a window inside another");
    return inside.front();
}

void Desktop::waitForSize(xcb_window_t window, int width, int height) const {
    waitUntil(
        [&] {
            const auto geometry = own(xcb_get_geometry_reply(
                connection_.get(), xcb_get_geometry(connection_.get(), window), nullptr));
            return geometry && geometry->width == width && geometry->height == height;
        },
        "a size of " + std::to_string(width) + " x " + std::to_string(height));
}

Desktop::Sizes Desktop::sizes(xcb_window_t window) const {
    xcb_size_hints_t hints{};
    xcb_icccm_get_wm_normal_hints_reply(connection_.get(),
                                        xcb_icccm_get_wm_normal_hints(connection_.get(), window),
                                        &hints, nullptr);
    return {{hints.min_width, hints.min_height}, {hints.max_width, hints.max_height}};
}

xcb_atom_t Desktop::atom(const std::string& name) const {
    const auto reply = own(xcb_intern_atom_reply(
        connection_.get(),
        xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()),
                        name.c_str()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Comes back when the server has done it.
void Desktop::fake(std::uint8_t type, std::uint8_t detail, int x, int y) const {
    xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, root_,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    own(xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()),
                                  nullptr));
}

void Desktop::drag(const std::vector<Place>& path) const {
    for (const Place& place : path) {
        fake(XCB_MOTION_NOTIFY, 0, place.x, place.y);
        if (&place == &path.front()) {
            fake(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1, 0, 0);
        }
    }
    fake(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1, 0, 0);
}

// As desktops do it: they ask the program.
void Desktop::clickCloseButton(xcb_window_t window) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(connection_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_.get());
}

void Desktop::destroy(xcb_window_t window) const {
    xcb_destroy_window(connection_.get(), window);
    xcb_flush(connection_.get());
}

} // namespace zelvatone
