// Loading code at run time.
#pragma once

#include <filesystem>
#include <string>

namespace zelvatone {

struct SharedLibrary {
    void* handle = nullptr; // null when it could not be loaded
    std::string error;      // why not, as one line without the library's name
};

// Loads the library with all its symbols bound and none shared. It stays loaded until the process
// ends. `path` is absolute: a bare name would be looked up among the system's libraries.
SharedLibrary loadLibrary(const std::filesystem::path& path);

// The address of a function that the library exports; null when it does not.
void* findFunction(const SharedLibrary& library, const char* name);

} // namespace zelvatone
