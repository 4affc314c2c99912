// An entry point that returns a record without the interface's mark.

#include "tests/support/plugins/SmallPlugin.h"

AEffect* VSTPluginMain(audioMasterCallback host) {
    static SmallPlugin plugin(host, true);
    plugin.getAeffect()->magic = vstFourCharacters('N', 'o', 'p', 'e');
    return plugin.getAeffect();
}
