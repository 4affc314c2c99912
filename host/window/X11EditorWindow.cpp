#include "host/window/EditorWindow.h"

#include "host/Error.h"
#include "host/threads/Interrupt.h"

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace zelvatone {

namespace {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
template<typename Reply>
using ReplyPtr = std::unique_ptr<Reply, FreeDeleter>;

struct ConnectionDeleter {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, ConnectionDeleter>;

Connection connect() {
    Connection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): no thread changes the environment.
        const char* display = std::getenv("DISPLAY");
        throw InputError(display == nullptr || *display == '\0'
                             ? std::string("there is no display to open the editor on: DISPLAY is "
                                           "not set")
                             : "cannot open the display " + std::string(display));
    }
    return connection;
}

// One channel of a pixel, whose bits `mask` names, as 0 to 255.
std::uint8_t channelOf(std::uint32_t pixel, std::uint32_t mask) {
    const std::uint32_t step = mask & (~mask + 1); // the mask's lowest bit
    return mask == 0 ? std::uint8_t{0}
                     : static_cast<std::uint8_t>(std::uint64_t{255} * ((pixel & mask) / step) /
                                                 (mask / step));
}

class X11EditorWindow final : public EditorWindow {
public:
    X11EditorWindow(const std::string& title, const WindowSize& size, WindowUse use);

    void* handle() const override {
        return reinterpret_cast<void*>(static_cast<std::uintptr_t>(window_));
    }
    void resize(const WindowSize& size) override;
    bool handleEvents(std::chrono::steady_clock::time_point end) override;
    void click(int x, int y) override;
    TrueColourPicture picture() override;

private:
    xcb_atom_t atom(std::string_view name) const;
    void create(WindowUse use);
    void describe(const std::string& title);
    void fixSize();
    bool handleQueued(); // false once the window is to be closed
    void checkConnection() const;
    xcb_window_t editorWindow() const;
    std::uint32_t bitsPerPixel() const;
    const xcb_visualtype_t& visual() const;

    Connection connection_;
    xcb_screen_t* screen_;
    xcb_window_t window_;
    xcb_atom_t closeRequest_;
    WindowSize size_;
};

X11EditorWindow::X11EditorWindow(const std::string& title, const WindowSize& size, WindowUse use)
    : connection_(connect()),
      screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data),
      window_(xcb_generate_id(connection_.get())),
      closeRequest_(atom("WM_DELETE_WINDOW")),
      size_(size) {
    create(use);
    describe(title);
    fixSize();
    xcb_map_window(connection_.get(), window_);
    xcb_flush(connection_.get());
}

xcb_atom_t X11EditorWindow::atom(std::string_view name) const {
    const ReplyPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_.get(),
        xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Desktops leave windows that override them where they are and as large as they are.
void X11EditorWindow::create(WindowUse use) {
    const std::array<std::uint32_t, 3> values{screen_->black_pixel,
                                              use == WindowUse::kPicture ? 1U : 0U,
                                              XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(
        connection_.get(), XCB_COPY_FROM_PARENT, window_, screen_->root, 0, 0,
        static_cast<std::uint16_t>(size_.width), static_cast<std::uint16_t>(size_.height), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
}

void X11EditorWindow::describe(const std::string& title) {
    const auto length = static_cast<std::uint32_t>(title.size());
    xcb_icccm_set_wm_name(connection_.get(), window_, XCB_ATOM_STRING, 8, length, title.data());
    // The same as UTF-8, which newer desktops prefer.
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, atom("_NET_WM_NAME"),
                        atom("UTF8_STRING"), 8, length, title.data());
    // Instance and class, each with its end.
    constexpr std::array kClass = std::to_array("zelvatone\0zelvatone");
    xcb_icccm_set_wm_class(connection_.get(), window_, kClass.size(), kClass.data());
    xcb_icccm_set_wm_protocols(connection_.get(), window_, atom("WM_PROTOCOLS"), 1, &closeRequest_);
}

// An editor has one size; a frame that can be dragged larger would show emptiness.
void X11EditorWindow::fixSize() {
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_min_size(&hints, size_.width, size_.height);
    xcb_icccm_size_hints_set_max_size(&hints, size_.width, size_.height);
    xcb_icccm_set_wm_normal_hints(connection_.get(), window_, &hints);
}

void X11EditorWindow::resize(const WindowSize& size) {
    size_ = size;
    fixSize();
    const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(size.width),
                                              static_cast<std::uint32_t>(size.height)};
    xcb_configure_window(connection_.get(), window_,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    xcb_flush(connection_.get());
}

void X11EditorWindow::checkConnection() const {
    if (xcb_connection_has_error(connection_.get()) != 0) {
        throw InputError("the display has gone away");
    }
}

// Whether the user wants the window closed, or another program has destroyed it.
bool isEnd(const xcb_generic_event_t& event, xcb_atom_t closeRequest) {
    constexpr std::uint8_t kType = 0x7f; // without the mark of events that clients sent
    const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(&event);
    switch (event.response_type & kType) {
    case XCB_CLIENT_MESSAGE:
        return message->data.data32[0] == closeRequest;
    case XCB_DESTROY_NOTIFY:
        return true;
    default:
        return false;
    }
}

bool X11EditorWindow::handleQueued() {
    while (const ReplyPtr<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if (isEnd(*event, closeRequest_)) {
            return false;
        }
    }
    checkConnection();
    return true;
}

bool X11EditorWindow::handleEvents(std::chrono::steady_clock::time_point end) {
    for (;;) {
        InterruptWatch::check();
        if (!handleQueued()) {
            return false;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return true;
        }
        pollfd wait{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
        poll(&wait, 1, static_cast<int>(left.count()));
    }
}

// The editor's own window, which it made inside ours; ours as long as there is none.
xcb_window_t X11EditorWindow::editorWindow() const {
    const ReplyPtr<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection_.get(), xcb_query_tree(connection_.get(), window_), nullptr));
    return tree && xcb_query_tree_children_length(tree.get()) > 0
               ? *xcb_query_tree_children(tree.get())
               : window_;
}

void X11EditorWindow::click(int x, int y) {
    xcb_button_press_event_t event{};
    event.detail = XCB_BUTTON_INDEX_1;
    event.root = screen_->root;
    event.event = editorWindow();
    event.event_x = event.root_x = static_cast<std::int16_t>(x);
    event.event_y = event.root_y = static_cast<std::int16_t>(y);
    event.same_screen = 1;
    const auto send = [&](std::uint8_t type, std::uint16_t buttonsBefore) {
        event.response_type = type;
        event.state = buttonsBefore;
        xcb_send_event(connection_.get(), 0, event.event, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
    };
    send(XCB_BUTTON_PRESS, 0);
    send(XCB_BUTTON_RELEASE, XCB_BUTTON_MASK_1);
    xcb_flush(connection_.get());
}

std::uint32_t X11EditorWindow::bitsPerPixel() const {
    auto formats = xcb_setup_pixmap_formats_iterator(xcb_get_setup(connection_.get()));
    for (; formats.rem > 0; xcb_format_next(&formats)) {
        if (formats.data->depth == screen_->root_depth) {
            return formats.data->bits_per_pixel;
        }
    }
    throw InputError("cannot read the display's picture: it has no format for its pixels");
}

const xcb_visualtype_t& X11EditorWindow::visual() const {
    for (auto depths = xcb_screen_allowed_depths_iterator(screen_); depths.rem > 0;
         xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == screen_->root_visual) {
                return *visuals.data;
            }
        }
    }
    throw InputError("cannot read the display's picture: it does not say what its colours are");
}

TrueColourPicture X11EditorWindow::picture() {
    const ReplyPtr<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection_.get(),
                            xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, 0,
                                          0, static_cast<std::uint16_t>(size_.width),
                                          static_cast<std::uint16_t>(size_.height), ~0U),
                            nullptr));
    const std::uint32_t bits = bitsPerPixel();
    if (!image || (bits != 32 && bits != 16)) {
        checkConnection();
        throw InputError("cannot read the display's picture: the window is hidden or too large");
    }
    const xcb_visualtype_t& colours = visual();
    const std::size_t pixelBytes = bits / 8;
    const std::size_t rowBytes = static_cast<std::size_t>(xcb_get_image_data_length(image.get())) /
                                 static_cast<std::size_t>(size_.height);
    TrueColourPicture picture{size_.width, size_.height, {}};
    for (int y = 0; y < size_.height; ++y) {
        const std::uint8_t* row =
            xcb_get_image_data(image.get()) + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < size_.width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + static_cast<std::size_t>(x) * pixelBytes, pixelBytes);
            for (const std::uint32_t mask :
                 {colours.red_mask, colours.green_mask, colours.blue_mask}) {
                picture.pixels.push_back(channelOf(pixel, mask));
            }
        }
    }
    return picture;
}

} // namespace

std::unique_ptr<EditorWindow> openEditorWindow(const std::string& title, const WindowSize& size,
                                               WindowUse use) {
    return std::make_unique<X11EditorWindow>(title, size, use);
}

} // namespace zelvatone
