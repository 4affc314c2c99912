// An effect: it has inputs and is no instrument.

#include "tests/support/plugins/SmallPlugin.h"

AEffect* VSTPluginMain(audioMasterCallback host) {
    return (new SmallPlugin(host, false))->getAeffect();
}
