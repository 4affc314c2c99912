// The records by which CLAP hosts and plug-ins know each other: our own definitions of the
// published layout, version 1.1.1, under names of our own.
//
// Functions are called on the main thread unless their name in brackets says otherwise: [audio] on
// the audio thread, [any] on any. Texts are UTF-8 and end with a zero.
#pragma once

#include "clap/abi/Process.h"

#include <cstdint>

namespace zelvatone::clap {

struct Version {
    std::uint32_t major;
    std::uint32_t minor;
    std::uint32_t revision;
};

inline constexpr Version kVersion{.major = 1, .minor = 1, .revision = 1};

// Versions below 1 were drafts with other layouts.
constexpr bool isCompatible(const Version& version) {
    return version.major >= 1;
}

struct Descriptor {
    Version version;
    const char* id; // the same for ever: sessions name the plug-in by it
    const char* name;
    const char* vendor;
    const char* url;
    const char* manualUrl;
    const char* supportUrl;
    const char* pluginVersion;
    const char* description;
    const char* const* features; // ends with null
};

// What the host hands to a plug-in; lives longer than the plug-in.
struct Host {
    Version version;
    void* hostData;
    const char* name;
    const char* vendor;
    const char* url;
    const char* hostVersion;
    const void* (*getExtension)(const Host* host, const char* id); // [any]
    void (*requestRestart)(const Host* host);                      // [any]
    void (*requestProcess)(const Host* host);                      // [any]
    void (*requestCallback)(const Host* host);                     // [any]
};

// A plug-in: created, init, any number of times (activate, [audio] startProcessing, process,
// stopProcessing, deactivate), destroy.
struct Plugin {
    const Descriptor* descriptor;
    void* pluginData;
    bool (*init)(const Plugin* plugin);
    void (*destroy)(const Plugin* plugin);
    bool (*activate)(const Plugin* plugin, double sampleRate, std::uint32_t minFrames,
                     std::uint32_t maxFrames);
    void (*deactivate)(const Plugin* plugin);
    bool (*startProcessing)(const Plugin* plugin);                          // [audio]
    void (*stopProcessing)(const Plugin* plugin);                           // [audio]
    void (*reset)(const Plugin* plugin);                                    // [audio]
    ProcessStatus (*process)(const Plugin* plugin, const Process* process); // [audio]
    const void* (*getExtension)(const Plugin* plugin, const char* id);      // [any]
    void (*onMainThread)(const Plugin* plugin);                             // after requestCallback
};

inline constexpr char kPluginFactoryId[] = "clap.plugin-factory";

struct PluginFactory {
    std::uint32_t (*getPluginCount)(const PluginFactory* factory);
    const Descriptor* (*getPluginDescriptor)(const PluginFactory* factory, std::uint32_t index);
    const Plugin* (*createPlugin)(const PluginFactory* factory, const Host* host, const char* id);
};

// What a file exports under the name clap_entry.
struct Entry {
    Version version;
    bool (*init)(const char* pluginPath);
    void (*deinit)();
    const void* (*getFactory)(const char* id);
};

} // namespace zelvatone::clap
