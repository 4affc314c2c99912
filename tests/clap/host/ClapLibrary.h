// A CLAP file, loaded.
#pragma once

#include "clap/abi/Plugin.h"

#include <string>

namespace zelvatone::test {

// Loads the file at `path`, calls its entry's init, and its deinit when it goes; the file stays
// loaded until the process ends, for leak checkers find the name of a function only while its code
// is there, and the libraries of a desktop leave memory behind. Throws std::runtime_error with a
// sentence for a file that is not a CLAP of version 1.
class ClapLibrary {
public:
    explicit ClapLibrary(const std::string& path);
    ~ClapLibrary();
    ClapLibrary(const ClapLibrary&) = delete;
    ClapLibrary& operator=(const ClapLibrary&) = delete;

    const clap::Entry& entry() const { return *entry_; }
    // Null without one.
    const clap::PluginFactory* factory() const;

private:
    const clap::Entry* entry_;
};

} // namespace zelvatone::test
