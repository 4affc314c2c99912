#include "vstguieditor/WebPage.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <memory>
#include <string>

namespace zelvatone {

namespace {

// Addresses are ASCII.
std::wstring wideAddress(const char* address) {
    const std::string narrow = address;
    return {narrow.begin(), narrow.end()};
}

// What the thread starts with, and gives back at its end.
struct Request {
    std::wstring address;
    HMODULE library; // a reference that keeps this code loaded
};

DWORD WINAPI runRequest(void* parameter) {
    HMODULE library = nullptr;
    {
        const std::unique_ptr<Request> request(static_cast<Request*>(parameter));
        library = request->library;
        // Some of what the shell calls for its users wants this.
        const HRESULT com =
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
        ShellExecuteW(nullptr, L"open", request->address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
        if (SUCCEEDED(com)) {
            CoUninitialize();
        }
    }
    // Both at once: the code may be gone when the call is done.
    FreeLibraryAndExitThread(library, 0);
}

} // namespace

// The shell may take seconds, and calls back into the message loop of the thread that asks. So a
// thread of its own asks: the host's windows go on meanwhile.
void openWebPage(const char* address) {
    auto request = std::make_unique<Request>();
    request->address = wideAddress(address);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&runRequest), &request->library);
    HANDLE thread = CreateThread(nullptr, 0, runRequest, request.get(), 0, nullptr);
    if (thread == nullptr) {
        FreeLibrary(request->library);
        return;
    }
    // The thread's from now on.
    static_cast<void>(request.release());
    CloseHandle(thread);
}

} // namespace zelvatone
