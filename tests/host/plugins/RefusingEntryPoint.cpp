// A plug-in that never starts.

#include "SmallPlugin.h"

AEffect* VSTPluginMain(audioMasterCallback /*host*/) {
    return nullptr;
}
