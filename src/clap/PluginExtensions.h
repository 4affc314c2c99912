// What the plug-in offers to a CLAP host beyond its life cycle. Each record is in a source of its
// own.
#pragma once

#include "clap/abi/Extensions.h"

namespace zelvatone {

extern const clap::PluginAudioPorts kAudioPortsExtension;
extern const clap::PluginNotePorts kNotePortsExtension;
extern const clap::PluginParams kParamsExtension;
extern const clap::PluginState kStateExtension;
extern const clap::PluginLatency kLatencyExtension;
extern const clap::PluginTail kTailExtension;
extern const clap::PluginGui kGuiExtension;
extern const clap::PluginTimerSupport kTimerExtension;

// The record of the extension `id`; null without it. Any thread.
const void* pluginExtension(const char* id);

// Copies `text`, cut to fit, and its zero to `target` of `size` bytes, at least one.
void copyText(const char* text, char* target, std::size_t size);

} // namespace zelvatone
