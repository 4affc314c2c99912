#include "host/plugin/PluginSearch.h"

#include "host/files/UserPath.h"

#include <windows.h>

#include <sstream>
#include <string>

namespace zelvatone {

namespace {

// As UTF-8.
std::string environment(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value == nullptr ? "" : std::filesystem::path(value).string();
}

std::filesystem::path executable() {
    std::wstring path(32768, L'\0'); // the longest that Windows knows
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

} // namespace

const char* pluginFile() {
    return "zelvatone.dll";
}

SearchSurroundings currentSurroundings() {
    return {executable().parent_path(), environment(L"VST_PATH"), environment(L"ProgramFiles")};
}

std::vector<std::filesystem::path> pluginFolders(const SearchSurroundings& surroundings) {
    std::vector<std::filesystem::path> folders{surroundings.executableFolder};
    std::istringstream listed(surroundings.vstPath);
    for (std::string folder; std::getline(listed, folder, ';');) {
        if (!folder.empty()) {
            folders.push_back(userPath(folder));
        }
    }
    if (!surroundings.home.empty()) {
        const auto programs = userPath(surroundings.home);
        folders.push_back(programs / "VSTPlugins");
        folders.push_back(programs / "Steinberg" / "VSTPlugins");
        folders.push_back(programs / "Common Files" / "VST2");
    }
    return folders;
}

} // namespace zelvatone
