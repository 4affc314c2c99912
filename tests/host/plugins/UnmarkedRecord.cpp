// An entry point that hands out a record without the interface's mark.

#include "SmallPlugin.h"

TEST_ENTRY_POINT(audioMasterCallback host) {
    static SmallPlugin plugin(host, true);
    plugin.getAeffect()->magic = vstFourCharacters('N', 'o', 'p', 'e');
    return plugin.getAeffect();
}
