#include "cli/commands/PluginInfo.h"

#include "host/plugin/Capabilities.h"
#include "host/plugin/PluginText.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace zelvatone {

namespace {

// The interface's categories by number; the first three are the common ones.
std::string categoryName(VstIntPtr category) {
    static constexpr std::array kNames{"unknown",     "effect",      "synth", "analysis",
                                       "mastering",   "spacializer", "room",  "surround",
                                       "restoration", "offline",     "shell", "generator"};
    return category >= 0 && category < static_cast<VstIntPtr>(kNames.size())
               ? kNames[static_cast<std::size_t>(category)]
               : "unknown";
}

// A plug-in's id is four characters by custom.
std::string idText(VstInt32 id) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto byte = static_cast<char>((static_cast<std::uint32_t>(id) >> shift) & 0xFFU);
        if (byte < ' ' || byte > '~') {
            return {};
        }
        text += byte;
    }
    return text;
}

std::vector<PinInfo> outputPins(HostedPlugin& plugin) {
    constexpr int kMostPins = 256; // a count that a broken plug-in reports must not keep us here
    std::vector<PinInfo> pins;
    for (int i = 0; i < std::min(plugin.outputCount(), kMostPins); ++i) {
        // Two records: a plug-in may write a label past the end of the first.
        std::array<VstPinProperties, 2> properties{};
        if (plugin.request(effGetOutputProperties, i, 0, properties.data()) == 1) {
            const VstPinProperties& pin = properties[0];
            pins.push_back({cleanText({pin.label, strnlen(pin.label, sizeof pin.label)}),
                            (pin.flags & kVstPinIsStereo) != 0});
        }
    }
    return pins;
}

int number(VstIntPtr result) {
    return static_cast<int>(result);
}

std::vector<std::pair<std::string, int>> capabilities(HostedPlugin& plugin) {
    std::vector<std::pair<std::string, int>> supports;
    for (const char* capability : kPluginCapabilities) {
        std::string question = capability; // a copy: the interface takes no const
        const VstIntPtr result = plugin.request(effCanDo, 0, 0, question.data());
        supports.emplace_back(capability, result > 0 ? 1 : std::max(number(result), -1));
    }
    return supports;
}

void addRecord(PluginInfo& info, const HostedPlugin& plugin) {
    const AEffect& record = plugin.record();
    info.path = plugin.path();
    info.uniqueId = record.uniqueID;
    info.uniqueIdText = idText(record.uniqueID);
    info.version = record.version;
    info.isInstrument = plugin.isInstrument();
    info.hasEditor = (record.flags & effFlagsHasEditor) != 0;
    info.storesChunks = (record.flags & effFlagsProgramChunks) != 0;
    info.rendersDoubles = (record.flags & effFlagsCanDoubleReplacing) != 0;
    info.programs = plugin.programCount();
    info.parameters = plugin.parameterCount();
    info.inputs = plugin.inputCount();
    info.outputs = plugin.outputCount();
    info.latencySamples = record.initialDelay;
}

} // namespace

PluginInfo pluginInfo(HostedPlugin& plugin) {
    PluginInfo info;
    addRecord(info, plugin);
    info.name = plugin.text(effGetEffectName);
    info.vendor = plugin.text(effGetVendorString);
    info.product = plugin.text(effGetProductString);
    info.vendorVersion = number(plugin.request(effGetVendorVersion));
    info.vstVersion = number(plugin.request(effGetVstVersion));
    info.category = categoryName(plugin.request(effGetPlugCategory));
    info.outputPins = outputPins(plugin);
    info.tailSamples = number(plugin.request(effGetTailSize));
    info.midiInputChannels = number(plugin.request(effGetNumMidiInputChannels));
    info.midiOutputChannels = number(plugin.request(effGetNumMidiOutputChannels));
    info.capabilities = capabilities(plugin);
    return info;
}

} // namespace zelvatone
