#include "vstgui/lib/platform/linux/x11frame.h"

#include "vstgui/lib/damage.h"
#include "vstgui/lib/events.h"
#include "vstgui/lib/platform/linux/cairodrawing.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace VSTGUI {
namespace {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
template<class Reply>
using ReplyPtr = std::unique_ptr<Reply, FreeDeleter>;

struct ConnectionDeleter {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, ConnectionDeleter>;

// The window's own connection: no other window of the process, the host's or another instance's,
// is touched by what happens on it, and no error handler of the process is involved.
struct Window {
    Connection connection;
    xcb_window_t id;
    xcb_gcontext_t graphics;
    std::uint8_t depth; // bits of a pixel that count
};

// The top bit of an event's type tells that another client sent it.
constexpr std::uint8_t kSentByClient = 0x80;
// Buttons of the pointer: three real ones, then one for each direction of the wheel.
enum : xcb_button_t { kLeft = 1, kMiddle, kRight, kWheelUp, kWheelDown, kWheelLeft, kWheelRight };

// The pixels of a window of `depth`, as Cairo names them.
cairo_format_t formatOfDepth(std::uint8_t depth) {
    switch (depth) {
    case 16:
        return CAIRO_FORMAT_RGB16_565;
    case 24:
        return CAIRO_FORMAT_RGB24;
    case 30:
        return CAIRO_FORMAT_RGB30;
    case 32:
        return CAIRO_FORMAT_ARGB32;
    default:
        return CAIRO_FORMAT_INVALID;
    }
}

// Bits of a pixel of `window`; 0 if there is no such window.
std::uint8_t depthOfWindow(xcb_connection_t* connection, xcb_window_t window) {
    xcb_generic_error_t* error = nullptr;
    const ReplyPtr<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), &error));
    std::free(error);
    return geometry ? geometry->depth : 0;
}

// Some hosts map the window when its property says so, some wait for it to map itself.
void announceEmbedding(xcb_connection_t* connection, xcb_window_t window) {
    constexpr std::string_view kName = "_XEMBED_INFO";
    const ReplyPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, kName.size(), kName.data()), nullptr));
    if (!atom) {
        return;
    }
    constexpr std::uint32_t kVersion = 1, kMapped = 1;
    const std::array<std::uint32_t, 2> info{kVersion, kMapped};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom->atom, atom->atom, 32,
                        info.size(), info.data());
}

// No event of the keyboard is selected, so that the server hands every key on to the host's
// window. No background: nothing flickers before the frame is drawn.
bool createWindow(const Window& window, xcb_window_t parent, const CPoint& size) {
    constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                      XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                      XCB_EVENT_MASK_POINTER_MOTION;
    xcb_connection_t* connection = window.connection.get();
    const auto created = xcb_create_window_checked(
        connection, XCB_COPY_FROM_PARENT, window.id, parent, 0, 0,
        static_cast<std::uint16_t>(size.x), static_cast<std::uint16_t>(size.y), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &kEvents);
    if (const ReplyPtr<xcb_generic_error_t> error{xcb_request_check(connection, created)}) {
        return false;
    }
    // No event reports that a copy to the window is done.
    constexpr std::uint32_t kNoExposures = 0;
    xcb_create_gc(connection, window.graphics, window.id, XCB_GC_GRAPHICS_EXPOSURES, &kNoExposures);
    announceEmbedding(connection, window.id);
    xcb_map_window(connection, window.id);
    xcb_flush(connection);
    return xcb_connection_has_error(connection) == 0;
}

// Of the pointer; the wheel's directions are left out.
constexpr std::uint16_t kButtonMask = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;

EventFlags<ModifierKey> modifiersOf(std::uint16_t state) {
    EventFlags<ModifierKey> modifiers;
    if ((state & XCB_MOD_MASK_SHIFT) != 0) {
        modifiers.add(ModifierKey::Shift);
    }
    if ((state & XCB_MOD_MASK_CONTROL) != 0) {
        modifiers.add(ModifierKey::Control);
    }
    if ((state & (XCB_MOD_MASK_1 | XCB_MOD_MASK_5)) != 0) {
        modifiers.add(ModifierKey::Alt);
    }
    return modifiers;
}

MouseButton buttonOf(xcb_button_t button) {
    if (button == kMiddle) {
        return MouseButton::Middle;
    }
    return button == kLeft ? MouseButton::Left : MouseButton::Right;
}

// Fills what press, release and move have in common.
template<class MouseEvent, class XcbEvent>
MouseEvent positioned(const XcbEvent& from) {
    MouseEvent event;
    event.mousePosition = CPoint(from.event_x, from.event_y);
    event.modifiers = modifiersOf(from.state);
    return event;
}

// How often a frame's turn comes while the loop is turned, by its own application or by another.
constexpr std::uint64_t kTurnMs = 16;

class X11Frame final : public IPlatformFrame,
                       private X11::IEventHandler,
                       private X11::ITimerHandler {
public:
    X11Frame(Window&& opened, IPlatformFrameCallback& callback, const CPoint& size,
             const SharedPointer<X11::IRunLoop>& loop)
        : window(std::move(opened)),
          callback(&callback),
          damage(CRect({0, 0}, size)),
          runLoop(loop) {
        if (runLoop) {
            runLoop->registerEventHandler(xcb_get_file_descriptor(window.connection.get()), this);
            runLoop->registerTimer(kTurnMs, this);
        }
    }

    void close() override;
    void invalidRect(const CRect& rect) override { damage.add(rect); }
    void handleEvents() override;
    void drawInvalid() override;

protected:
    ~X11Frame() override = default;

private:
    void onEvent() override { handleEvents(); }
    void onTimer() override;
    bool isConnected() const {
        return callback && xcb_connection_has_error(window.connection.get()) == 0;
    }

    void handle(const xcb_generic_event_t& event);
    void onExpose(const xcb_expose_event_t& event);
    void onPress(const xcb_button_press_event_t& event);
    void onRelease(const xcb_button_release_event_t& event);
    void onMotion(const xcb_motion_notify_event_t& event);
    void onWheel(const xcb_button_press_event_t& event);
    void onDestroyed();
    void handleQueued();
    void releaseLostButton();
    void drawRect(const CRect& rect);
    void putRows(const CairoContext& picture, const CRect& rect, int firstRow, int rows) const;

    Window window;
    IPlatformFrameCallback* callback; // null once closed
    Damage damage;
    SharedPointer<X11::IRunLoop> runLoop;
    bool isShown = false;
    bool isGone = false; // destroyed by another client
    // Of the press whose release has not come yet; 0 at other times.
    xcb_timestamp_t pressTime = 0;
};

void X11Frame::close() {
    callback = nullptr;
    if (auto loop = std::exchange(runLoop, nullptr)) {
        loop->unregisterEventHandler(this);
        loop->unregisterTimer(this);
    }
    xcb_connection_t* connection = window.connection.get();
    if (!isGone) {
        xcb_destroy_window(connection, window.id);
    }
    // Waits for the reply: when the host goes on, the window is gone.
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    window.connection.reset();
}

void X11Frame::handleEvents() {
    // A handler may close the frame.
    const SharedPointer<X11Frame> kept(this);
    handleQueued();
    if (isConnected() && pressTime != 0) {
        releaseLostButton();
    }
}

// One turn of the loop serves all frames that share it, also those that are not idled themselves.
void X11Frame::onTimer() {
    const SharedPointer<X11Frame> kept(this);
    if (callback) {
        callback->platformOnTurn();
    }
}

void X11Frame::handleQueued() {
    while (isConnected()) {
        const ReplyPtr<xcb_generic_event_t> event(xcb_poll_for_event(window.connection.get()));
        if (!event) {
            return;
        }
        handle(*event);
    }
}

// Errors come as events of type 0: a request to a window that is gone. They are ignored.
void X11Frame::handle(const xcb_generic_event_t& event) {
    const auto* any = static_cast<const void*>(&event);
    switch (event.response_type & ~kSentByClient) {
    case XCB_EXPOSE:
        onExpose(*static_cast<const xcb_expose_event_t*>(any));
        break;
    case XCB_BUTTON_PRESS:
        onPress(*static_cast<const xcb_button_press_event_t*>(any));
        break;
    case XCB_BUTTON_RELEASE:
        onRelease(*static_cast<const xcb_button_release_event_t*>(any));
        break;
    case XCB_MOTION_NOTIFY:
        onMotion(*static_cast<const xcb_motion_notify_event_t*>(any));
        break;
    case XCB_MAP_NOTIFY:
        isShown = true;
        break;
    case XCB_UNMAP_NOTIFY:
        isShown = false;
        break;
    case XCB_DESTROY_NOTIFY:
        onDestroyed();
        break;
    default:
        break;
    }
}

void X11Frame::onExpose(const xcb_expose_event_t& event) {
    damage.add(CRect(CPoint(event.x, event.y), CPoint(event.width, event.height)));
}

// The server itself sends every move and the release that follow a press to the window of the
// press, wherever the pointer goes.
void X11Frame::onPress(const xcb_button_press_event_t& event) {
    if (event.detail >= kWheelUp) {
        onWheel(event);
        return;
    }
    pressTime = event.time;
    auto down = positioned<MouseDownEvent>(event);
    down.buttonState.add(buttonOf(event.detail));
    down.othersAreHeld = (event.state & kButtonMask) != 0; // as it was before this press
    callback->platformOnEvent(down);
}

void X11Frame::onRelease(const xcb_button_release_event_t& event) {
    if (event.detail >= kWheelUp) {
        return;
    }
    pressTime = 0;
    auto up = positioned<MouseUpEvent>(event);
    up.buttonState.add(buttonOf(event.detail));
    callback->platformOnEvent(up);
}

void X11Frame::onMotion(const xcb_motion_notify_event_t& event) {
    auto moved = positioned<MouseMoveEvent>(event);
    if ((event.state & XCB_BUTTON_MASK_1) != 0) {
        moved.buttonState.add(MouseButton::Left);
    }
    if ((event.state & XCB_BUTTON_MASK_2) != 0) {
        moved.buttonState.add(MouseButton::Middle);
    }
    if ((event.state & XCB_BUTTON_MASK_3) != 0) {
        moved.buttonState.add(MouseButton::Right);
    }
    callback->platformOnEvent(moved);
}

void X11Frame::onWheel(const xcb_button_press_event_t& event) {
    auto wheel = positioned<MouseWheelEvent>(event);
    switch (event.detail) {
    case kWheelUp:
        wheel.deltaY = 1;
        break;
    case kWheelDown:
        wheel.deltaY = -1;
        break;
    case kWheelLeft:
        wheel.deltaX = -1;
        break;
    case kWheelRight:
        wheel.deltaX = 1;
        break;
    default:
        return;
    }
    callback->platformOnEvent(wheel);
}

// A window that is hidden in the middle of a drag gets no release, and not even an event of its
// hiding if the host's window is the one that goes. So the server is asked as long as the last
// event was a press.
void X11Frame::releaseLostButton() {
    const xcb_timestamp_t askedFor = pressTime;
    xcb_connection_t* connection = window.connection.get();
    const ReplyPtr<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        connection, xcb_query_pointer_unchecked(connection, window.id), nullptr));
    // Events from before the reply have come in with it.
    handleQueued();
    if (!pointer || !isConnected() || pressTime != askedFor || (pointer->mask & kButtonMask) != 0) {
        return;
    }
    pressTime = 0;
    MouseUpEvent up;
    up.mousePosition = CPoint(pointer->win_x, pointer->win_y);
    up.modifiers = modifiersOf(pointer->mask);
    up.buttonState.add(MouseButton::Left);
    callback->platformOnEvent(up);
}

void X11Frame::onDestroyed() {
    isGone = true;
    isShown = false;
    pressTime = 0;
    MouseCancelEvent cancel;
    callback->platformOnEvent(cancel);
}

void X11Frame::drawInvalid() {
    if (!isConnected() || damage.isEmpty()) {
        return;
    }
    const auto rects = damage.take();
    // A hidden window is exposed as a whole when it is shown again.
    if (!isShown) {
        return;
    }
    for (const CRect& rect : rects) {
        drawRect(rect);
    }
    xcb_flush(window.connection.get());
}

void X11Frame::drawRect(const CRect& rect) {
    CairoContext picture(formatOfDepth(window.depth), rect);
    callback->platformDrawRect(picture, rect);
    // As many rows at once as fit a request, besides the request's own few words.
    constexpr int kRequestHead = 64;
    const int rowBytes = cairo_image_surface_get_stride(picture.flushedSurface());
    const auto largest =
        static_cast<int>(xcb_get_maximum_request_length(window.connection.get())) * 4;
    const int rowsAtOnce = std::max(1, (largest - kRequestHead) / rowBytes);
    const auto height = static_cast<int>(rect.getHeight());
    for (int row = 0; row < height; row += rowsAtOnce) {
        putRows(picture, rect, row, std::min(rowsAtOnce, height - row));
    }
}

void X11Frame::putRows(const CairoContext& picture, const CRect& rect, int firstRow,
                       int rows) const {
    cairo_surface_t* surface = picture.flushedSurface();
    const int rowBytes = cairo_image_surface_get_stride(surface);
    const unsigned char* pixels =
        cairo_image_surface_get_data(surface) + static_cast<std::ptrdiff_t>(firstRow) * rowBytes;
    xcb_put_image(window.connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window.id, window.graphics,
                  static_cast<std::uint16_t>(rect.getWidth()), static_cast<std::uint16_t>(rows),
                  static_cast<std::int16_t>(rect.left),
                  static_cast<std::int16_t>(rect.top + firstRow), 0, window.depth,
                  static_cast<std::uint32_t>(rows * rowBytes), pixels);
}

} // namespace

SharedPointer<IPlatformFrame> openX11Frame(IPlatformFrameCallback& callback, const CPoint& size,
                                           void* parent,
                                           const SharedPointer<X11::IRunLoop>& runLoop) {
    Connection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return {};
    }
    const auto parentId = static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(parent));
    // The window takes over its parent's depth.
    const std::uint8_t depth = depthOfWindow(connection.get(), parentId);
    if (formatOfDepth(depth) == CAIRO_FORMAT_INVALID) {
        return {};
    }
    const std::uint32_t id = xcb_generate_id(connection.get());
    const std::uint32_t graphics = xcb_generate_id(connection.get());
    Window window{std::move(connection), id, graphics, depth};
    if (!createWindow(window, parentId, size)) {
        return {};
    }
    return makeOwned<X11Frame>(std::move(window), callback, size, runLoop);
}

} // namespace VSTGUI
