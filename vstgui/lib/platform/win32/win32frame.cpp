#include "vstgui/lib/platform/win32/win32frame.h"

#include "vstgui/lib/damage.h"
#include "vstgui/lib/events.h"
#include "vstgui/lib/platform/win32/gdiplusdrawing.h"

#include <windowsx.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace VSTGUI {
namespace {

struct RegionDeleter {
    void operator()(HRGN region) const { DeleteObject(region); }
};
using Region = std::unique_ptr<std::remove_pointer_t<HRGN>, RegionDeleter>;

CRect rectOf(const RECT& rect) {
    return {static_cast<CCoord>(rect.left), static_cast<CCoord>(rect.top),
            static_cast<CCoord>(rect.right), static_cast<CCoord>(rect.bottom)};
}

// The rectangles that make up what of `window` is due to be drawn.
std::vector<RECT> invalidRectsOf(HWND window) {
    const Region region(CreateRectRgn(0, 0, 0, 0));
    constexpr BOOL kErase = FALSE;
    GetUpdateRgn(window, region.get(), kErase);
    const DWORD bytes = GetRegionData(region.get(), 0, nullptr);
    std::vector<RGNDATA> data(bytes / sizeof(RGNDATA) + 1);
    if (GetRegionData(region.get(), bytes, data.data()) == 0) {
        return {};
    }
    const auto* rects = reinterpret_cast<const RECT*>(data.front().Buffer);
    return {rects, rects + data.front().rdh.nCount};
}

EventFlags<ModifierKey> modifiersOf(WPARAM keys) {
    EventFlags<ModifierKey> modifiers;
    if ((keys & MK_SHIFT) != 0) {
        modifiers.add(ModifierKey::Shift);
    }
    if ((keys & MK_CONTROL) != 0) {
        modifiers.add(ModifierKey::Control);
    }
    // The messages of the mouse do not tell of this key.
    if (GetKeyState(VK_MENU) < 0) {
        modifiers.add(ModifierKey::Alt);
    }
    return modifiers;
}

// What messages of the mouse tell of its buttons.
constexpr WPARAM kButtonKeys = MK_LBUTTON | MK_MBUTTON | MK_RBUTTON;

WPARAM keyOf(MouseButton button) {
    if (button == MouseButton::Middle) {
        return MK_MBUTTON;
    }
    return button == MouseButton::Left ? MK_LBUTTON : MK_RBUTTON;
}

CPoint pointOf(LPARAM position) {
    return {static_cast<CCoord>(GET_X_LPARAM(position)),
            static_cast<CCoord>(GET_Y_LPARAM(position))};
}

// Fills what press, release and move have in common.
template<class MouseEvent>
MouseEvent positioned(WPARAM keys, LPARAM position) {
    MouseEvent event;
    event.mousePosition = pointOf(position);
    event.modifiers = modifiersOf(keys);
    return event;
}

class Win32Frame final : public IPlatformFrame {
public:
    Win32Frame(IPlatformFrameCallback& callback, const CPoint& size)
        : callback(&callback), bounds({0, 0}, size) {}

    bool open(const Win32FrameClass& frameClass, HWND parent);
    void close() override;
    void invalidRect(const CRect& rect) override;
    void handleEvents() override;
    void drawInvalid() override;

    // Handles the messages of the class's windows.
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

protected:
    ~Win32Frame() override = default;

private:
    // Whether the message is done with.
    bool handle(UINT message, WPARAM wParam, LPARAM lParam);
    void onPaint();
    void onPress(MouseButton button, WPARAM keys, LPARAM position);
    void onRelease(MouseButton button, WPARAM keys, LPARAM position);
    void onMotion(WPARAM keys, LPARAM position);
    void onWheel(UINT message, WPARAM wParam, LPARAM screenPosition);
    void onDestroyed();
    void releaseLostButton();
    void tell(Event& event) const {
        if (callback) {
            callback->platformOnEvent(event);
        }
    }

    HWND window = nullptr;            // null before it is made and when it is gone
    IPlatformFrameCallback* callback; // null once closed
    CRect bounds;
    bool isPressed = false; // a press came whose release has not come yet
};

bool Win32Frame::open(const Win32FrameClass& frameClass, HWND parent) {
    // Its first messages come, and set `window`, before it is whole.
    window = frameClass.createWindow(bounds.getSize(), parent, this);
    if (window) {
        ShowWindow(window, SW_SHOWNA);
    }
    return window;
}

void Win32Frame::close() {
    callback = nullptr;
    if (window) {
        DestroyWindow(window);
    }
}

void Win32Frame::invalidRect(const CRect& rect) {
    const CRect whole = CRect(rect).makeIntegral().bound(bounds);
    const RECT invalid{static_cast<LONG>(whole.left), static_cast<LONG>(whole.top),
                       static_cast<LONG>(whole.right), static_cast<LONG>(whole.bottom)};
    constexpr BOOL kErase = FALSE;
    if (window) {
        InvalidateRect(window, &invalid, kErase);
    }
}

// The host's own loop has brought all messages by now; what no message tells is to be looked at.
void Win32Frame::handleEvents() {
    const bool isHeld = GetCapture() == window && IsWindowVisible(window) != FALSE;
    if (window && isPressed && !isHeld) {
        releaseLostButton();
    }
}

void Win32Frame::drawInvalid() {
    if (window) {
        UpdateWindow(window);
    }
}

LRESULT CALLBACK Win32Frame::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* frame = static_cast<Win32Frame*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        frame->window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(frame));
    }
    // A handler may close the frame.
    const SharedPointer<Win32Frame> kept(
        reinterpret_cast<Win32Frame*>(GetWindowLongPtrW(window, GWLP_USERDATA)));
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    if (kept && kept->handle(message, wParam, lParam)) {
        return message == WM_ERASEBKGND ? 1 : 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool Win32Frame::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND: // nothing flickers before the frame is drawn
        return true;
    case WM_PAINT:
        onPaint();
        return true;
    case WM_LBUTTONDOWN:
        onPress(MouseButton::Left, wParam, lParam);
        return true;
    case WM_MBUTTONDOWN:
        onPress(MouseButton::Middle, wParam, lParam);
        return true;
    case WM_RBUTTONDOWN:
        onPress(MouseButton::Right, wParam, lParam);
        return true;
    case WM_LBUTTONUP:
        onRelease(MouseButton::Left, wParam, lParam);
        return true;
    case WM_MBUTTONUP:
        onRelease(MouseButton::Middle, wParam, lParam);
        return true;
    case WM_RBUTTONUP:
        onRelease(MouseButton::Right, wParam, lParam);
        return true;
    case WM_MOUSEMOVE:
        onMotion(wParam, lParam);
        return true;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
        onWheel(message, wParam, lParam);
        return true;
    case WM_DESTROY:
        onDestroyed();
        return true;
    default:
        return false;
    }
}

void Win32Frame::onPaint() {
    Damage damage(bounds);
    for (const RECT& rect : invalidRectsOf(window)) {
        damage.add(rectOf(rect));
    }
    PAINTSTRUCT paint;
    HDC target = BeginPaint(window, &paint);
    for (const CRect& rect : damage.take()) {
        GdiplusContext picture(rect);
        if (callback) {
            callback->platformDrawRect(picture, rect);
        }
        picture.copyTo(target);
    }
    EndPaint(window, &paint);
}

// The focus stays where it is: the keyboard is the host's.
void Win32Frame::onPress(MouseButton button, WPARAM keys, LPARAM position) {
    isPressed = true;
    SetCapture(window);
    auto down = positioned<MouseDownEvent>(keys, position);
    down.buttonState.add(button);
    down.othersAreHeld = (keys & kButtonKeys & ~keyOf(button)) != 0;
    tell(down);
}

void Win32Frame::onRelease(MouseButton button, WPARAM keys, LPARAM position) {
    isPressed = false;
    ReleaseCapture();
    auto up = positioned<MouseUpEvent>(keys, position);
    up.buttonState.add(button);
    tell(up);
}

void Win32Frame::onMotion(WPARAM keys, LPARAM position) {
    auto moved = positioned<MouseMoveEvent>(keys, position);
    if ((keys & MK_LBUTTON) != 0) {
        moved.buttonState.add(MouseButton::Left);
    }
    if ((keys & MK_MBUTTON) != 0) {
        moved.buttonState.add(MouseButton::Middle);
    }
    if ((keys & MK_RBUTTON) != 0) {
        moved.buttonState.add(MouseButton::Right);
    }
    tell(moved);
}

void Win32Frame::onWheel(UINT message, WPARAM wParam, LPARAM screenPosition) {
    POINT point{GET_X_LPARAM(screenPosition), GET_Y_LPARAM(screenPosition)};
    ScreenToClient(window, &point);
    MouseWheelEvent wheel;
    wheel.mousePosition = CPoint(point.x, point.y);
    wheel.modifiers = modifiersOf(GET_KEYSTATE_WPARAM(wParam));
    const CCoord notches = static_cast<CCoord>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA;
    (message == WM_MOUSEWHEEL ? wheel.deltaY : wheel.deltaX) = notches;
    tell(wheel);
}

// The release went to another window, or to none: this one was hidden, or another one took the
// mouse. The drag ends where the pointer is.
void Win32Frame::releaseLostButton() {
    if (!std::exchange(isPressed, false)) {
        return;
    }
    if (GetCapture() == window) {
        ReleaseCapture();
    }
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window, &point);
    MouseUpEvent up;
    up.mousePosition = CPoint(point.x, point.y);
    up.buttonState.add(MouseButton::Left);
    tell(up);
}

void Win32Frame::onDestroyed() {
    window = nullptr;
    isPressed = false;
    MouseCancelEvent cancel;
    tell(cancel);
}

// Runs something with the pixels that another window is measured in, on Windows 10 and later, which
// tell one window's pixels from another's.
class PixelsOf {
public:
    explicit PixelsOf(HWND other) {
        if (contextOf && setContext) {
            before = setContext(contextOf(other));
        }
    }
    ~PixelsOf() {
        if (before) {
            setContext(before);
        }
    }
    PixelsOf(const PixelsOf&) = delete;
    PixelsOf& operator=(const PixelsOf&) = delete;

private:
    using Context = HANDLE;

    template<class Function>
    static Function* find(const char* name) {
        return reinterpret_cast<Function*>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
    }

    Context(WINAPI* contextOf)(HWND) = find<Context WINAPI(HWND)>("GetWindowDpiAwarenessContext");
    Context(WINAPI* setContext)(Context) =
        find<Context WINAPI(Context)>("SetThreadDpiAwarenessContext");
    Context before = nullptr;
};

} // namespace

Win32FrameClass::Win32FrameClass(HINSTANCE instance)
    : instance(instance),
      name(L"ZelvatoneFrame" + std::to_wstring(reinterpret_cast<std::uintptr_t>(instance))) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = Win32Frame::onMessage;
    description.hInstance = instance;
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    description.lpszClassName = name.c_str();
    RegisterClassExW(&description);
}

Win32FrameClass::~Win32FrameClass() {
    UnregisterClassW(name.c_str(), instance);
}

HWND Win32FrameClass::createWindow(const CPoint& size, HWND parent, void* user) const {
    const PixelsOf pixels(parent);
    return CreateWindowExW(0, name.c_str(), L"", WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0,
                           static_cast<int>(size.x), static_cast<int>(size.y), parent, nullptr,
                           instance, user);
}

SharedPointer<IPlatformFrame> openWin32Frame(const Win32FrameClass& frameClass,
                                             IPlatformFrameCallback& callback, const CPoint& size,
                                             HWND parent) {
    auto frame = makeOwned<Win32Frame>(callback, size);
    return frame->open(frameClass, parent) ? SharedPointer<IPlatformFrame>(frame.get())
                                           : SharedPointer<IPlatformFrame>();
}

} // namespace VSTGUI
