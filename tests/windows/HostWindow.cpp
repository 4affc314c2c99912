#include "tests/windows/HostWindow.h"

namespace zelvatone::test {

namespace {

constexpr const wchar_t* kClass = L"ZelvatoneTestHost";
constexpr DWORD kStyle = WS_POPUP | WS_CLIPCHILDREN; // all of it is room for the editor
constexpr int kLeft = 120, kTop = 90;                // away from the screen's edges

void send(HWND window, UINT message, WPARAM wParam, int x, int y) {
    PostMessageW(window, message, wParam, MAKELPARAM(x, y));
    HostWindow::pump();
}

} // namespace

HostWindow::HostWindow(int width, int height) : width(width), height(height) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = onMessage;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClass;
    RegisterClassExW(&description); // fails from the second window on, as it should
    window = CreateWindowExW(0, kClass, L"host", kStyle, kLeft, kTop, width, height, nullptr,
                             nullptr, description.hInstance, this);
    ShowWindow(window, SW_SHOW);
    SetFocus(window);
    pump();
}

HostWindow::~HostWindow() {
    DestroyWindow(window);
    pump();
}

LRESULT CALLBACK HostWindow::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == WM_KEYDOWN) {
        ++self->keysHeard;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int HostWindow::children() const {
    int count = 0;
    for (HWND child = editor(); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        ++count;
    }
    return count;
}

void HostWindow::pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void HostWindow::press(int x, int y, WPARAM keys) const {
    const bool isRight = (keys & MK_RBUTTON) != 0;
    send(editor(), isRight ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, keys, x, y);
}

void HostWindow::move(int x, int y, WPARAM keys) const {
    send(editor(), WM_MOUSEMOVE, keys, x, y);
}

void HostWindow::release(int x, int y, WPARAM keys) const {
    send(editor(), WM_LBUTTONUP, keys, x, y);
}

void HostWindow::click(int x, int y) const {
    press(x, y);
    release(x, y);
}

void HostWindow::wheel(int x, int y, int notches, WPARAM keys) const {
    POINT point{x, y};
    ClientToScreen(editor(), &point);
    const auto distance = static_cast<WORD>(static_cast<SHORT>(notches * WHEEL_DELTA));
    send(editor(), WM_MOUSEWHEEL, MAKEWPARAM(keys, distance), point.x, point.y);
}

WindowPicture HostWindow::picture() const {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    WindowPicture picture{width, height, std::vector<std::uint32_t>(count)};
    HDC source = GetDC(editor() != nullptr ? editor() : window);
    HDC memory = CreateCompatibleDC(source);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // the top row comes first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* pixels = static_cast<const std::uint32_t*>(bits);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        picture.pixels[i] = pixels[i] & 0xFFFFFF;
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(editor() != nullptr ? editor() : window, source);
    return picture;
}

} // namespace zelvatone::test
