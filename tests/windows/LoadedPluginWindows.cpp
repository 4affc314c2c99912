#include "tests/plugin/LoadedPlugin.h"

#include <windows.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

const PluginLibrary& PluginLibrary::get() {
    static const PluginLibrary library;
    return library;
}

const char* PluginLibrary::path() {
    return ZELVATONE_MODULE_PATH;
}

PluginLibrary::PluginLibrary() {
    const auto start = std::chrono::steady_clock::now();
    handle = LoadLibraryA(path());
    const auto end = std::chrono::steady_clock::now();
    if (handle == nullptr) {
        std::fprintf(stderr, "%s does not load: error %lu\n", path(), GetLastError());
        std::abort();
    }
    milliseconds = std::chrono::duration<double, std::milli>(end - start).count();
}

PluginLibrary::Entry PluginLibrary::entry(const char* name) const {
    const FARPROC found = GetProcAddress(static_cast<HMODULE>(handle), name);
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(found));
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
