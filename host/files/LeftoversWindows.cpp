#include "host/files/Leftovers.h"

#include <windows.h>

#include <string>
#include <string_view>
#include <system_error>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

constexpr std::wstring_view kPrefix = L".zelvatone-";

// A process that has ended keeps its number while another process holds a handle to it.
bool isRunning(DWORD process) {
    HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (handle == nullptr) {
        return GetLastError() == ERROR_ACCESS_DENIED;
    }
    const bool runs = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return runs;
}

void sweep(const fs::path& folder) {
    std::error_code error; // what cannot be read or removed stays
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::wstring name = entry->path().filename().wstring();
        if (name.starts_with(kPrefix) &&
            !isRunning(std::wcstoul(name.c_str() + kPrefix.size(), nullptr, 10))) {
            std::error_code refused;
            fs::remove(entry->path(), refused);
        }
    }
}

} // namespace

fs::path hiddenName(const fs::path& folder, int number) {
    return folder / (std::wstring(kPrefix) + std::to_wstring(GetCurrentProcessId()) + L"-" +
                     std::to_wstring(number));
}

// The number in the name tells which process uses the file.
bool claim(int /*descriptor*/) {
    return true;
}

void sweepLeftovers(const fs::path& folder) noexcept {
    try {
        sweep(folder);
    } catch (const std::bad_alloc&) {
        return; // the next run sweeps
    }
}

} // namespace zelvatone
