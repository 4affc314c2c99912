// The linked plug-in file, loaded as a host loads it, and instances of it.
#pragma once

#include "tests/plugin/HostedEffect.h"
#include "tests/plugin/RecordingHost.h"

#include <gtest/gtest.h>

// The library stays loaded until the process ends: leak checkers find the name of the
// function that allocated only while its code is there.
class PluginLibrary {
public:
    using Entry = AEffect* (*)(audioMasterCallback);

    // Loads the library on first use and ends the process, with the loader's message, if it fails.
    static const PluginLibrary& get();
    static const char* path();

    Entry entry(const char* name = "VSTPluginMain") const;
    double loadMilliseconds() const { return milliseconds; }

private:
    PluginLibrary();

    void* handle;
    double milliseconds;
};

// An instance for the current RecordingHost; closed with it, if not before.
class LoadedPlugin : public HostedEffect {
public:
    LoadedPlugin();
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    VstIntPtr close();
};

// Tests of one instance. Its host has recorded nothing yet when the test starts.
class LoadedPluginTest : public ::testing::Test {
protected:
    LoadedPluginTest() { host.calls.clear(); }

    RecordingHost host;
    LoadedPlugin plugin;
};

// A note that is loud enough to be heard at once in a short block.
inline constexpr MidiMessage kNoteOn{0x90, 69, 127};
