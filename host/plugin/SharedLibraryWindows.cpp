#include "host/plugin/SharedLibrary.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <system_error>

namespace zelvatone {

namespace {

// Windows' own words.
std::string lastError() {
    const DWORD error = GetLastError();
    if (error == ERROR_BAD_EXE_FORMAT) {
        return "it is not a library for 64-bit Windows";
    }
    std::string text = std::system_category().message(static_cast<int>(error));
    std::replace(text.begin(), text.end(), '\n', ' ');
    text.erase(text.find_last_not_of(" \r.") + 1);
    return text;
}

} // namespace

SharedLibrary loadLibrary(const std::filesystem::path& path) {
    SetErrorMode(SEM_FAILCRITICALERRORS); // no box on the screen when another library is missing
    // What a plug-in brings along is looked for beside it, if its path has no slashes.
    HMODULE handle = LoadLibraryExW(std::filesystem::path(path).make_preferred().c_str(), nullptr,
                                    LOAD_WITH_ALTERED_SEARCH_PATH);
    return {handle, handle == nullptr ? lastError() : std::string()};
}

void* findFunction(const SharedLibrary& library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library.handle), name));
}

} // namespace zelvatone
