#include "plugin/PluginLibrary.h"

#include "Error.h"

#include <dlfcn.h>

#include <string>

namespace zelvatone {

namespace {

// The loader's own words, without the path that it puts in front.
std::string loaderError(const std::string& path) {
    const char* text = dlerror(); // NOLINT(concurrency-mt-unsafe): glibc keeps it per thread
    const std::string line = text == nullptr ? "unknown error" : text;
    const std::string prefix = path + ": ";
    return line.rfind(prefix, 0) == 0 ? line.substr(prefix.size()) : line;
}

} // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& path)
    // A bare name would be looked up among the system's libraries.
    : path_(std::filesystem::absolute(path)) {
    if (!std::filesystem::exists(path_)) {
        throw InputError(path.string() + ": no such plug-in");
    }
    void* library = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw InputError(path.string() + " is no plug-in: " + loaderError(path_.string()));
    }
    void* entry = dlsym(library, "VSTPluginMain");
    if (entry == nullptr) {
        entry = dlsym(library, "main"); // what the interface called it before version 2.4
    }
    if (entry == nullptr) {
        throw InputError(path.string() + " is no plug-in: it has no entry point VSTPluginMain");
    }
    entryPoint_ = reinterpret_cast<EntryPoint>(entry);
}

} // namespace zelvatone
