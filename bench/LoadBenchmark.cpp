// What a host waits for when it scans the library: loading it, and making an instance.
#include "vst2/aeffect.h"

#include <benchmark/benchmark.h>

#include <dlfcn.h>

namespace {

using EntryPoint = AEffect* (*)(audioMasterCallback);

VstIntPtr returnVersion(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

void loadLibrary(benchmark::State& state) {
    for (auto _ : state) {
        void* library = dlopen(ZELVATONE_MODULE, RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            state.SkipWithError(dlerror()); // NOLINT(concurrency-mt-unsafe): one thread
            break;
        }
        dlclose(library);
    }
}

void makeInstance(benchmark::State& state) {
    void* library = dlopen(ZELVATONE_MODULE, RTLD_NOW | RTLD_LOCAL);
    const auto entryPoint = reinterpret_cast<EntryPoint>(dlsym(library, "VSTPluginMain"));
    for (auto _ : state) {
        AEffect* effect = entryPoint(returnVersion);
        effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0F);
    }
    dlclose(library);
}

BENCHMARK(loadLibrary)->Unit(benchmark::kMillisecond);
// Few of them: by design each leaves its engine in memory.
BENCHMARK(makeInstance)->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace
