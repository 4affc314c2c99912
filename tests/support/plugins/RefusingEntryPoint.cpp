// A plug-in that never starts.

#include "tests/support/plugins/SmallPlugin.h"

AEffect* VSTPluginMain(audioMasterCallback /*host*/) {
    return nullptr;
}
