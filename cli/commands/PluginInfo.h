// A plug-in's identity and properties, as data.
#pragma once

#include "host/plugin/HostedPlugin.h"

#include <string>
#include <utility>
#include <vector>

namespace zelvatone {

struct PinInfo {
    std::string label;
    bool isStereo;
};

struct PluginInfo {
    std::string path;
    std::string name;
    std::string vendor;
    std::string product;
    int vendorVersion = 0;
    int uniqueId = 0;
    std::string uniqueIdText; // four characters; empty when they cannot be printed
    int version = 0;
    int vstVersion = 0; // 2400 for VST 2.4
    std::string category;
    bool isInstrument = false;
    bool hasEditor = false;
    bool storesChunks = false;
    bool rendersDoubles = false;
    int programs = 0;
    int parameters = 0;
    int inputs = 0;
    int outputs = 0;
    std::vector<PinInfo> outputPins; // of those that the plug-in describes
    int latencySamples = 0;
    int tailSamples = 0;
    int midiInputChannels = 0;
    int midiOutputChannels = 0;
    std::vector<std::pair<std::string, int>> capabilities; // 1 yes, -1 no, 0 does not say
};

PluginInfo pluginInfo(HostedPlugin& plugin);

} // namespace zelvatone
