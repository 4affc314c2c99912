#include "host/window/EditorWindow.h"

#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/threads/Interrupt.h"

#include <windows.h>

#include <algorithm>

namespace zelvatone {

namespace {

constexpr const wchar_t* kClass = L"ZelvatoneHost";
constexpr DWORD kFramed = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

// A picture in memory that Windows draws into; its pixels are 0x00RRGGBB.
class PixelBuffer {
public:
    PixelBuffer(HDC like, const WindowSize& size) : context_(CreateCompatibleDC(like)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.width;
        info.bmiHeader.biHeight = -size.height; // the top row comes first
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        void* pixels = nullptr;
        bitmap_ = CreateDIBSection(like, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
        pixels_ = static_cast<const std::uint32_t*>(pixels);
        before_ = SelectObject(context_, bitmap_);
    }
    ~PixelBuffer() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    HDC context() const { return context_; }
    const std::uint32_t* pixels() const { return pixels_; } // null without memory for them

private:
    HDC context_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
    const std::uint32_t* pixels_;
};

class Win32EditorWindow final : public EditorWindow {
public:
    Win32EditorWindow(const std::string& title, const WindowSize& size, WindowUse use);
    ~Win32EditorWindow() override { DestroyWindow(window_); }

    void* handle() const override { return window_; }
    void resize(const WindowSize& size) override;
    bool handleEvents(std::chrono::steady_clock::time_point end) override;
    void click(int x, int y) override;
    TrueColourPicture picture() override;

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_;
    WindowSize size_;
    bool isClosed_ = false;
};

// What lies under the editor is black. Not clipped to leave out the editor, so that the picture of
// the window holds it.
void registerClass() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    description.lpszClassName = kClass;
    description.lpfnWndProc = DefWindowProcW;
    RegisterClassExW(&description); // from the second window on it is there already
}

Win32EditorWindow::Win32EditorWindow(const std::string& title, const WindowSize& size,
                                     WindowUse use)
    : size_(size) {
    registerClass();
    const bool isFramed = use == WindowUse::kWork;
    window_ = CreateWindowExW(isFramed ? 0 : WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kClass,
                              userPath(title).c_str(), isFramed ? kFramed : WS_POPUP,
                              isFramed ? CW_USEDEFAULT : 0, 0, size.width, size.height, nullptr,
                              nullptr, GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) {
        throw InputError("there is no desktop to open the editor on");
    }
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(onMessage));
    resize(size);
    ShowWindow(window_, isFramed ? SW_SHOW : SW_SHOWNA);
}

LRESULT CALLBACK Win32EditorWindow::onMessage(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
    auto* self = reinterpret_cast<Win32EditorWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_CLOSE) {
        self->isClosed_ = true;
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// The size is that of the inside.
void Win32EditorWindow::resize(const WindowSize& size) {
    size_ = size;
    RECT frame{0, 0, size.width, size.height};
    constexpr BOOL kMenu = FALSE;
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)), kMenu,
                       static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)));
    SetWindowPos(window_, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Win32EditorWindow::handleEvents(std::chrono::steady_clock::time_point end) {
    for (;;) {
        InterruptWatch::check();
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (isClosed_) {
            return false;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return true;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left.count()), QS_ALLINPUT);
    }
}

void Win32EditorWindow::click(int x, int y) {
    HWND editor = GetWindow(window_, GW_CHILD);
    HWND target = editor != nullptr ? editor : window_;
    const LPARAM place = MAKELPARAM(x, y);
    PostMessageW(target, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(target, WM_LBUTTONUP, 0, place);
}

TrueColourPicture Win32EditorWindow::picture() {
    HDC shown = GetDC(window_);
    const PixelBuffer buffer(shown, size_);
    const bool isCopied =
        BitBlt(buffer.context(), 0, 0, size_.width, size_.height, shown, 0, 0, SRCCOPY) != FALSE;
    ReleaseDC(window_, shown);
    GdiFlush(); // what was asked for is in the memory only now
    if (!isCopied || buffer.pixels() == nullptr) {
        throw InputError("cannot read the display's picture");
    }
    TrueColourPicture picture{size_.width, size_.height, {}};
    const auto count =
        static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height);
    for (std::size_t i = 0; i < count; ++i) {
        for (const int channel : {16, 8, 0}) {
            picture.pixels.push_back(static_cast<std::uint8_t>(buffer.pixels()[i] >> channel));
        }
    }
    return picture;
}

} // namespace

std::unique_ptr<EditorWindow> openEditorWindow(const std::string& title, const WindowSize& size,
                                               WindowUse use) {
    return std::make_unique<Win32EditorWindow>(title, size, use);
}

} // namespace zelvatone
