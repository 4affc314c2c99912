#include "host/plugin/PluginSearch.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <system_error>

namespace zelvatone {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): no thread sets any
    return value == nullptr ? "" : value;
}

} // namespace

const char* pluginFile() {
    return "zelvatone.so";
}

SearchSurroundings currentSurroundings() {
    std::error_code error; // without /proc the search begins at the custom places
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return {executable.parent_path(), environment("VST_PATH"), environment("HOME")};
}

std::vector<std::filesystem::path> pluginFolders(const SearchSurroundings& surroundings) {
    std::vector<std::filesystem::path> folders;
    if (!surroundings.executableFolder.empty()) {
        folders.push_back(surroundings.executableFolder);
        folders.push_back(surroundings.executableFolder.parent_path() / "lib" / "vst");
    }
    std::istringstream listed(surroundings.vstPath);
    for (std::string folder; std::getline(listed, folder, ':');) {
        if (!folder.empty()) {
            folders.emplace_back(folder);
        }
    }
    if (!surroundings.home.empty()) {
        folders.push_back(std::filesystem::path(surroundings.home) / ".vst");
    }
    folders.emplace_back("/usr/local/lib/vst");
    folders.emplace_back("/usr/lib/vst");
    return folders;
}

} // namespace zelvatone
