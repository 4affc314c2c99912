#include "tests/clap/host/ModuleFile.h"

#include <dlfcn.h>

namespace zelvatone::test {

void* openModule(const std::string& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* symbolOf(void* module, const char* name) {
    return dlsym(module, name);
}

} // namespace zelvatone::test
