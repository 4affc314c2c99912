// A plug-in's shared library, and the entry point in it.
#pragma once

#include "vst2/aeffect.h"

#include <filesystem>

namespace zelvatone {

class PluginLibrary {
public:
    using EntryPoint = AEffect* (*)(audioMasterCallback);

    // Loads the library with all its symbols bound and none shared. Throws InputError when it
    // cannot be loaded or has no entry point. The library stays loaded until the process ends:
    // instruments leave threads and exit handlers behind that would run into unmapped memory.
    explicit PluginLibrary(const std::filesystem::path& path);

    EntryPoint entryPoint() const { return entryPoint_; }
    const std::filesystem::path& path() const { return path_; } // absolute

private:
    std::filesystem::path path_;
    EntryPoint entryPoint_ = nullptr;
};

} // namespace zelvatone
