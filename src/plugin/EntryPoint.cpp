// The one function that a host finds in the library.
#include "engine/ZelvatoneEngine.h"
#include "plugin/VSTGuiVSTInterface.h"

#include <new>

namespace {

constexpr VstInt32 kUniqueID = 61546; // by which hosts tell this plug-in's saved state from others'

// A new instance, or null without memory for it. The engine stays allocated for as long as the
// library is loaded, whatever becomes of the plug-in object: a host that closes an instance while
// its audio thread is still inside leaves that thread a whole engine.
AudioEffect* createEffectInstance(audioMasterCallback audioMaster) {
    try {
        auto* engine = new zelvatone::ZelvatoneEngine;
        return new zelvatone::VSTGuiVSTInterface(audioMaster, engine, kUniqueID);
    } catch (const std::bad_alloc&) { // a host in C would not survive it
        return nullptr;
    }
}

} // namespace

// Exported here and, for hosts of the first days, a second time as `main`; see zelvatone.map,
// zelvatone.def, and platform/Linux.cmake. Returns null to a host that reports no version.
// User-interface thread.
extern "C" AEffect* VSTPluginMain(audioMasterCallback audioMaster);

extern "C" AEffect* VSTPluginMain(audioMasterCallback audioMaster) {
    if (audioMaster == nullptr ||
        audioMaster(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0F) == 0) {
        return nullptr;
    }
    AudioEffect* effect = createEffectInstance(audioMaster);
    return effect == nullptr ? nullptr : effect->getAeffect();
}
