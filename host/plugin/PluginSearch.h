// Where the host looks for its plug-in when the user names none.
#pragma once

#include <filesystem>
#include <vector>

namespace zelvatone {

// What the search depends on outside of itself.
struct SearchSurroundings {
    std::filesystem::path executableFolder;
    std::string vstPath; // $VST_PATH: folders, with the platform's sign between; may be empty
    std::string home;    // $HOME, or %ProgramFiles% on Windows; may be empty
};
SearchSurroundings currentSurroundings();

// Our plug-in's name: "zelvatone.so" or "zelvatone.dll".
const char* pluginFile();

// The folders, first choice first: beside the executable (a build tree), ../lib/vst from there
// (an installation), then the places that instruments live in by custom.
std::vector<std::filesystem::path> pluginFolders(const SearchSurroundings& surroundings);

// The first folder's file of that name. Throws InputError when none holds one.
std::filesystem::path findPlugin(const std::vector<std::filesystem::path>& folders);

} // namespace zelvatone
