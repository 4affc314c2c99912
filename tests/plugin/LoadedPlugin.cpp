#include "tests/plugin/LoadedPlugin.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

const PluginLibrary& PluginLibrary::get() {
    static const PluginLibrary library;
    return library;
}

const char* PluginLibrary::path() {
    return ZELVATONE_MODULE_PATH;
}

PluginLibrary::PluginLibrary() {
    const auto start = std::chrono::steady_clock::now();
    handle = dlopen(path(), RTLD_NOW | RTLD_LOCAL);
    const auto end = std::chrono::steady_clock::now();
    if (handle == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror()); // NOLINT(concurrency-mt-unsafe): no threads here
        std::abort();
    }
    milliseconds = std::chrono::duration<double, std::milli>(end - start).count();
}

PluginLibrary::Entry PluginLibrary::entry(const char* name) const {
    return reinterpret_cast<Entry>(dlsym(handle, name));
}

LoadedPlugin::LoadedPlugin()
    : HostedEffect(PluginLibrary::get().entry()(RecordingHost::callback)) {}

LoadedPlugin::~LoadedPlugin() {
    if (record != nullptr) {
        close();
    }
}

VstIntPtr LoadedPlugin::close() {
    const VstIntPtr result = ask(effClose);
    record = nullptr;
    return result;
}
