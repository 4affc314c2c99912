// A plug-in object over a spying engine, without the library around it.
#pragma once

#include "plugin/VSTGuiVSTInterface.h"
#include "tests/plugin/HostedEffect.h"
#include "tests/plugin/RecordingHost.h"
#include "tests/plugin/SpyEngine.h"

#include <gtest/gtest.h>

#include <memory>

class ShellTest : public ::testing::Test {
protected:
    static constexpr VstInt32 kUniqueID = 61546;

    ~ShellTest() override { close(); }

    // As the host closes it; the object deletes itself.
    VstIntPtr close() {
        if (plugin == nullptr) {
            return 0;
        }
        plugin = nullptr;
        return effect.ask(effClose);
    }

    RecordingHost host;
    SpyEngine engine;
    zelvatone::VSTGuiVSTInterface* plugin =
        new zelvatone::VSTGuiVSTInterface(RecordingHost::callback, &engine, kUniqueID);
    HostedEffect effect{plugin->getAeffect()};
};
