// The ports: notes in, stereo out, no delay, and the tail.
#include "clap/ClapPlugin.h"
#include "clap/PluginExtensions.h"

namespace zelvatone {

namespace {

std::uint32_t audioPortCount(const clap::Plugin* /*plugin*/, bool isInput) noexcept {
    return isInput ? 0 : 1;
}

bool audioPort(const clap::Plugin* /*plugin*/, std::uint32_t index, bool isInput,
               clap::AudioPortInfo* info) noexcept {
    if (isInput || index != 0) {
        return false;
    }
    *info = {.id = 0,
             .name = {},
             .flags = clap::kAudioPortIsMain,
             .channelCount = 2,
             .portType = clap::kStereoPort,
             .inPlacePair = clap::kInvalidId};
    copyText("Output", info->name, sizeof info->name);
    return true;
}

std::uint32_t notePortCount(const clap::Plugin* /*plugin*/, bool isInput) noexcept {
    return isInput ? 1 : 0;
}

bool notePort(const clap::Plugin* /*plugin*/, std::uint32_t index, bool isInput,
              clap::NotePortInfo* info) noexcept {
    if (!isInput || index != 0) {
        return false;
    }
    // MIDI first: it has the pedals, the bend and the program changes.
    *info = {.id = 0,
             .supportedDialects = clap::kDialectClap | clap::kDialectMidi,
             .preferredDialect = clap::kDialectMidi,
             .name = {}};
    copyText("Notes", info->name, sizeof info->name);
    return true;
}

std::uint32_t latency(const clap::Plugin* /*plugin*/) noexcept {
    return 0;
}

std::uint32_t tail(const clap::Plugin* plugin) noexcept {
    return ClapPlugin::of(plugin).instrument().tail();
}

} // namespace

const clap::PluginAudioPorts kAudioPortsExtension{.count = audioPortCount, .get = audioPort};
const clap::PluginNotePorts kNotePortsExtension{.count = notePortCount, .get = notePort};
const clap::PluginLatency kLatencyExtension{.get = latency};
const clap::PluginTail kTailExtension{.get = tail};

} // namespace zelvatone
