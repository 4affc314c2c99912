// An effect: it has inputs and is no instrument.

#include "SmallPlugin.h"

AEffect* VSTPluginMain(audioMasterCallback host) {
    return (new SmallPlugin(host, false))->getAeffect();
}
