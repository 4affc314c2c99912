// An instrument whose entry point has its older name only.

#include "tests/support/plugins/SmallPlugin.h"

extern "C" __attribute__((visibility("default"))) AEffect*
oldEntry(audioMasterCallback host) __asm__("main");

AEffect* oldEntry(audioMasterCallback host) {
    return (new SmallPlugin(host, true))->getAeffect();
}
