// What stays in memory when a host has loaded the library, used it and unloaded it: the engine,
// which is kept on purpose, and what the libraries of the desktop keep for themselves.
#include "engine/ZelvatoneEngine.h"
#include "tests/plugin/CallWatch.h"
#include "tests/plugin/HostedEffect.h"
#include "tests/plugin/PlainHost.h"

#include <gtest/gtest.h>

#include <memory>

#include <dlfcn.h>

namespace {

using Entry = AEffect* (*)(audioMasterCallback);

std::ptrdiff_t memory() {
    return callCounts().memory;
}

void* load(const char* name) {
    void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << name;
    return library;
}

class Unload : public testing::Test {
protected:
    // Bytes that stay after a library was loaded and unloaded that needs the same others as the
    // plug-in's and has nothing of its own.
    static std::ptrdiff_t keptByOthers() {
        const std::ptrdiff_t before = memory();
        dlclose(load(ZELVATONE_EMPTY_LIBRARY_PATH));
        return memory() - before;
    }

    struct Kept {
        std::ptrdiff_t engine; // between the loading of the library and the close of the instance
        std::ptrdiff_t library;
    };
    static Kept keptByPlugin() {
        const std::ptrdiff_t before = memory();
        void* library = load(ZELVATONE_MODULE_PATH);
        const std::ptrdiff_t loaded = memory();
        const auto entry = reinterpret_cast<Entry>(dlsym(library, "VSTPluginMain"));
        {
            const HostedEffect effect(entry(plainHostCallback));
            effect.ask(effOpen);
            effect.ask(effMainsChanged, 0, 1);
            effect.render(64);
            effect.ask(effMainsChanged, 0, 0);
            effect.ask(effClose);
        }
        const std::ptrdiff_t engine = memory() - loaded;
        dlclose(library);
        EXPECT_EQ(dlopen(ZELVATONE_MODULE_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr);
        return {engine, memory() - before - engine};
    }

    // Bytes of an engine, counted at one that is linked in here.
    static std::ptrdiff_t engineSize() {
        const std::ptrdiff_t before = memory();
        const auto engine = std::make_unique<zelvatone::ZelvatoneEngine>();
        return memory() - before;
    }
};

TEST_F(Unload, KeepsTheEngineAndNothingElseOfThePlugIn) {
    // What is kept once, however often a library comes, and what the loader keeps until a library
    // is unloaded the next time, is not counted: each is loaded and unloaded once before.
    const auto settledAfter = [](auto cycle) {
        cycle();
        return cycle();
    };
    settledAfter(keptByOthers);
    settledAfter(keptByPlugin);
    for (int round = 0; round < 5; ++round) {
        const std::ptrdiff_t others = settledAfter(keptByOthers);
        const Kept kept = settledAfter(keptByPlugin);
        EXPECT_EQ(kept.library, others) << "round " << round;
        EXPECT_EQ(kept.engine, engineSize()) << "round " << round;
    }
}

} // namespace
