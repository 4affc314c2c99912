#include "tests/vstgui/HostWindow.h"

#include <xcb/xtest.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace VSTGUI::test {
namespace {

constexpr int kLeft = 150, kTop = 120; // where the window lies on the screen
// Symbols of the keyboard (X11's keysyms).
constexpr std::uint32_t kShiftKey = 0xffe1, kControlKey = 0xffe3, kAltKey = 0xffe9, kAKey = 'a';

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
template<class Reply>
std::unique_ptr<Reply, FreeDeleter> own(Reply* reply) {
    return std::unique_ptr<Reply, FreeDeleter>(reply);
}

xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    const auto reply = own(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, length, name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// The key that makes `symbol`.
xcb_keycode_t keyOf(xcb_connection_t* connection, std::uint32_t symbol) {
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto map = own(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr));
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int index = 0; index < count * map->keysyms_per_keycode; ++index) {
        if (symbols[index] == symbol) {
            return static_cast<xcb_keycode_t>(setup->min_keycode +
                                              index / map->keysyms_per_keycode);
        }
    }
    throw std::runtime_error("the server's keyboard lacks a key");
}

xcb_visualid_t visualOfDepth(xcb_screen_t* screen, std::uint8_t wanted) {
    for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0;
         xcb_depth_next(&depths)) {
        if (depths.data->depth == wanted && xcb_depth_visuals_length(depths.data) > 0) {
            return xcb_depth_visuals(depths.data)->visual_id;
        }
    }
    throw std::runtime_error("the server lacks a depth");
}

// Five bits, or six, as eight.
Pixel widened(std::uint32_t value, int bits) {
    return (value << (8 - bits)) | (value >> (2 * bits - 8));
}

Pixel toPixel(std::uint32_t raw, int depth) {
    if (depth == 16) {
        return widened(raw >> 11 & 31, 5) << 16 | widened(raw >> 5 & 63, 6) << 8 |
               widened(raw & 31, 5);
    }
    return raw & 0xffffff;
}

} // namespace

HostWindow::HostWindow(Host kind, int width, int height)
    : width(width), height(height), connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection.get()) != 0) {
        throw std::runtime_error("no X server");
    }
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    window = xcb_generate_id(connection.get());
    create(kind);
    show();
}

HostWindow::~HostWindow() = default;

void HostWindow::create(Host kind) {
    const bool isTranslucent = kind == Host::kTranslucent;
    std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
    if (kind == Host::kEmbedsStrictly) {
        events |= XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    }
    // Another depth than the screen's needs a visual, its colours and a border.
    const xcb_visualid_t visual = isTranslucent ? visualOfDepth(screen, 32) : screen->root_visual;
    const xcb_colormap_t colors = xcb_generate_id(connection.get());
    xcb_create_colormap(connection.get(), XCB_COLORMAP_ALLOC_NONE, colors, screen->root, visual);
    const std::uint32_t values[] = {0, 0, events, colors};
    xcb_create_window(connection.get(), isTranslucent ? 32 : screen->root_depth, window,
                      screen->root, kLeft, kTop, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values);
}

void HostWindow::sync() const {
    std::free(xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()),
                                        nullptr));
}

void* HostWindow::handle() const {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(window));
}

void HostWindow::destroy() {
    xcb_destroy_window(connection.get(), window);
    sync();
}

void HostWindow::destroyChildren() {
    xcb_destroy_subwindows(connection.get(), window);
    sync();
}

void HostWindow::hide() {
    xcb_unmap_window(connection.get(), window);
    sync();
}

void HostWindow::show() {
    xcb_map_window(connection.get(), window);
    sync();
}

std::vector<xcb_window_t> HostWindow::children() const {
    const auto tree = own(
        xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::pair<int, int> HostWindow::sizeOf(xcb_window_t child) const {
    const auto size = own(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), child), nullptr));
    return size ? std::pair<int, int>(size->width, size->height) : std::pair(0, 0);
}

std::vector<std::uint32_t> HostWindow::embedInfo(xcb_window_t child) const {
    const xcb_atom_t atom = atomOf(connection.get(), "_XEMBED_INFO");
    const auto property = own(xcb_get_property_reply(
        connection.get(), xcb_get_property(connection.get(), 0, child, atom, atom, 0, 2), nullptr));
    if (!property || property->format != 32) {
        return {};
    }
    const auto* first = static_cast<std::uint32_t*>(xcb_get_property_value(property.get()));
    return {first, first + property->value_len};
}

bool HostWindow::isViewable(xcb_window_t candidate) const {
    const auto attributes = own(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), candidate), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void HostWindow::embedChildren() {
    constexpr std::uint32_t kMapped = 1, kEmbeddedNotify = 0, kVersion = 1;
    for (const xcb_window_t child : children()) {
        const auto info = embedInfo(child);
        if (info.size() != 2 || (info[1] & kMapped) == 0) {
            continue;
        }
        xcb_map_window(connection.get(), child);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = child;
        message.type = atomOf(connection.get(), "_XEMBED");
        message.data.data32[1] = kEmbeddedNotify;
        message.data.data32[3] = window;
        message.data.data32[4] = kVersion;
        xcb_send_event(connection.get(), 0, child, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
    }
    sync();
}

void HostWindow::sendExpose(xcb_window_t child, int times) {
    xcb_expose_event_t event{};
    event.response_type = XCB_EXPOSE;
    event.window = child;
    event.width = static_cast<std::uint16_t>(width);
    event.height = static_cast<std::uint16_t>(height);
    for (int sent = 0; sent < times; ++sent) {
        xcb_send_event(connection.get(), 0, child, XCB_EVENT_MASK_EXPOSURE,
                       reinterpret_cast<const char*>(&event));
    }
    sync();
}

void HostWindow::fake(std::uint8_t type, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(connection.get(), type, detail, XCB_CURRENT_TIME, screen->root,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    sync();
}

void HostWindow::movePointer(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, kLeft + x, kTop + y);
}

void HostWindow::press(int button) {
    fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
}

void HostWindow::release(int button) {
    fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
}

void HostWindow::click(int x, int y, int button) {
    movePointer(x, y);
    press(button);
    release(button);
}

void HostWindow::holdKey(std::uint32_t symbol, bool down) {
    fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keyOf(connection.get(), symbol));
}

void HostWindow::holdShift(bool down) {
    holdKey(kShiftKey, down);
}

void HostWindow::holdControl(bool down) {
    holdKey(kControlKey, down);
}

void HostWindow::holdAlt(bool down) {
    holdKey(kAltKey, down);
}

void HostWindow::typeKey() {
    holdKey(kAKey, true);
    holdKey(kAKey, false);
}

int HostWindow::keysHeard() {
    int keys = 0;
    while (const auto event = own(xcb_poll_for_event(connection.get()))) {
        keys += (event->response_type & 0x7f) == XCB_KEY_PRESS;
    }
    return keys;
}

void HostWindow::takeFocus() {
    xcb_set_input_focus(connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    sync();
}

bool HostWindow::hasFocus() const {
    const auto focus = own(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    return focus && focus->focus == window;
}

std::uint32_t HostWindow::rawChildPixel(int x, int y) const {
    const auto image = own(xcb_get_image_reply(
        connection.get(),
        xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, children().at(0),
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, ~0U),
        nullptr));
    std::uint32_t raw = 0;
    if (image) {
        std::memcpy(&raw, xcb_get_image_data(image.get()), sizeof raw);
    }
    return raw;
}

Screenshot HostWindow::screenshot(int left, int top, int columns, int rows) const {
    const auto image = own(xcb_get_image_reply(
        connection.get(),
        xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root,
                      static_cast<std::int16_t>(kLeft + left),
                      static_cast<std::int16_t>(kTop + top), static_cast<std::uint16_t>(columns),
                      static_cast<std::uint16_t>(rows), ~0U),
        nullptr));
    if (!image) {
        throw std::runtime_error("no picture of the screen");
    }
    const int bytesPerPixel = image->depth == 16 ? 2 : 4;
    const int rowBytes = (columns * bytesPerPixel + 3) / 4 * 4;
    const std::uint8_t* data = xcb_get_image_data(image.get());
    Screenshot shot{columns, rows, {}};
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) {
            const std::uint8_t* at =
                data + std::ptrdiff_t{y} * rowBytes + std::ptrdiff_t{x} * bytesPerPixel;
            std::uint32_t raw = at[0] | at[1] << 8;
            if (bytesPerPixel == 4) {
                raw |= static_cast<std::uint32_t>(at[2]) << 16;
            }
            shot.pixels.push_back(toPixel(raw, image->depth));
        }
    }
    return shot;
}

} // namespace VSTGUI::test
