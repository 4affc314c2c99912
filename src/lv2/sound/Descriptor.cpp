// The one function that a host finds in the library, and the C functions that it leads to.
#include "lv2/Features.h"
#include "lv2/sound/InstrumentPlugin.h"

#include <new>
#include <string_view>

namespace zelvatone::lv2 {

namespace {

InstrumentPlugin& pluginOf(LV2_Handle instance) {
    return *static_cast<InstrumentPlugin*>(instance);
}

// Null without memory, or for a host that lacks what the description asks for.
LV2_Handle instantiate(const LV2_Descriptor* /*descriptor*/, double sampleRate,
                       const char* /*bundle*/, const LV2_Feature* const* features) {
    const auto* map = featureOf<const LV2_URID_Map>(features, LV2_URID__map);
    if (map == nullptr) {
        return nullptr;
    }
    try {
        return new InstrumentPlugin(sampleRate, *map);
    } catch (const std::bad_alloc&) { // a host in C would not survive it
        return nullptr;
    }
}

// What the host calls is noexcept: an exception must not unwind into a host that may be written in
// another language, so it ends the process here.

void connectPort(LV2_Handle instance, std::uint32_t port, void* data) noexcept {
    pluginOf(instance).connect(port, data);
}

void activate(LV2_Handle instance) noexcept {
    pluginOf(instance).reset();
}

void run(LV2_Handle instance, std::uint32_t frames) noexcept {
    pluginOf(instance).run(frames);
}

void cleanUp(LV2_Handle instance) noexcept {
    delete static_cast<InstrumentPlugin*>(instance);
}

LV2_State_Status save(LV2_Handle instance, LV2_State_Store_Function store, LV2_State_Handle handle,
                      std::uint32_t /*flags*/, const LV2_Feature* const* /*features*/) noexcept {
    return pluginOf(instance).save(store, handle);
}

LV2_State_Status restore(LV2_Handle instance, LV2_State_Retrieve_Function retrieve,
                         LV2_State_Handle handle, std::uint32_t /*flags*/,
                         const LV2_Feature* const* /*features*/) noexcept {
    return pluginOf(instance).restore(retrieve, handle);
}

const void* extensionData(const char* uri) {
    static const LV2_State_Interface kState{save, restore};
    return std::string_view(uri) == LV2_STATE__interface ? &kState : nullptr;
}

} // namespace

} // namespace zelvatone::lv2

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(std::uint32_t index) {
    namespace lv2 = zelvatone::lv2;
    static const LV2_Descriptor kDescriptor{lv2::kPluginUri, lv2::instantiate,  lv2::connectPort,
                                            lv2::activate,   lv2::run,          nullptr,
                                            lv2::cleanUp,    lv2::extensionData};
    return index == 0 ? &kDescriptor : nullptr;
}
