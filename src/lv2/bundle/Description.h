// The bundle's description: what a host reads before it loads a binary. Made from the parameter
// table and the factory programs, so that no value is written twice.
#pragma once

#include <string>

namespace zelvatone::lv2 {

// manifest.ttl: what there is, and where it is described.
std::string manifestText();
// zelvatone.ttl: the plug-in with its ports, and its editor.
std::string pluginText();
// presets.ttl: every factory program.
std::string presetsText();

} // namespace zelvatone::lv2
