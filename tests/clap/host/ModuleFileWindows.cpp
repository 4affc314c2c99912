#include "tests/clap/host/ModuleFile.h"

#include <windows.h>

namespace zelvatone::test {

void* openModule(const std::string& path) {
    return LoadLibraryA(path.c_str());
}

void* symbolOf(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

} // namespace zelvatone::test
