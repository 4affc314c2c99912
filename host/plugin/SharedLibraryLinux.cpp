#include "host/plugin/SharedLibrary.h"

#include <dlfcn.h>

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

SharedLibrary loadLibrary(const std::filesystem::path& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return {handle, handle == nullptr ? loaderError(path.string()) : std::string()};
}

void* findFunction(const SharedLibrary& library, const char* name) {
    return dlsym(library.handle, name);
}

} // namespace zelvatone
