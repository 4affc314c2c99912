// The one name that a host finds in the library.
#include "clap/ClapPlugin.h"

#include <cstring>
#include <new>

namespace zelvatone {

namespace {

std::uint32_t pluginCount(const clap::PluginFactory* /*factory*/) noexcept {
    return 1;
}

const clap::Descriptor* pluginDescriptor(const clap::PluginFactory* /*factory*/,
                                         std::uint32_t index) noexcept {
    return index == 0 ? &kClapDescriptor : nullptr;
}

// A new instance, or null: for another id, for a host of another layout, or without memory.
const clap::Plugin* createPlugin(const clap::PluginFactory* /*factory*/, const clap::Host* host,
                                 const char* id) noexcept {
    if (host == nullptr || id == nullptr || !clap::isCompatible(host->version) ||
        std::strcmp(id, kClapDescriptor.id) != 0) {
        return nullptr;
    }
    try {
        return &(new ClapPlugin(*host))->record();
    } catch (const std::bad_alloc&) { // a host in C would not survive it
        return nullptr;
    }
}

constexpr clap::PluginFactory kFactory{.getPluginCount = pluginCount,
                                       .getPluginDescriptor = pluginDescriptor,
                                       .createPlugin = createPlugin};

bool initLibrary(const char* /*path*/) noexcept {
    return true;
}

void deinitLibrary() noexcept {}

const void* factoryNamed(const char* id) noexcept {
    return std::strcmp(id, clap::kPluginFactoryId) == 0 ? &kFactory : nullptr;
}

} // namespace

} // namespace zelvatone

// Exported; see zelvatone.map and zelvatone.def.
// NOLINTBEGIN(readability-identifier-naming): the name that hosts look for
extern "C" const zelvatone::clap::Entry clap_entry;
const zelvatone::clap::Entry clap_entry{.version = zelvatone::clap::kVersion,
                                        .init = zelvatone::initLibrary,
                                        .deinit = zelvatone::deinitLibrary,
                                        .getFactory = zelvatone::factoryNamed};
// NOLINTEND(readability-identifier-naming)
