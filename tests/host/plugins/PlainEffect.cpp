// An effect: it has inputs and is no instrument.

#include "SmallPlugin.h"

TEST_ENTRY_POINT(audioMasterCallback host) {
    return (new SmallPlugin(host, false))->getAeffect();
}
