// A plug-in that never starts.

#include "SmallPlugin.h"

TEST_ENTRY_POINT(audioMasterCallback /*host*/) {
    return nullptr;
}
