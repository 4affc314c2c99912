// Which instruments a rendering has, and what each of them plays.
#pragma once

#include "cli/commands/RenderSettings.h"
#include "cli/commands/SetupOptions.h"
#include "host/midi/Song.h"
#include "host/plugin/PluginLibrary.h"
#include "host/render/Ensemble.h"

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

namespace zelvatone {

// One instrument to be made.
struct PartPlan {
    std::optional<int> channel; // the one that it plays; none: all that have no part of their own
    PluginSetup setup;
    float gain; // factor
};

// A part for every channel that `channels` names, in their order, each with the bank and the
// settings of `setup`. After them one with all of `setup` for the rest, if the song plays on any
// other channel or no channel is named. Throws InputError for a bad preset file.
std::vector<PartPlan> planParts(const Song& song, const std::map<int, ChannelChoice>& channels,
                                const PluginSetup& setup);

// Those of `channels` on which the song has no note.
std::vector<int> silentChannels(const Song& song, const std::map<int, ChannelChoice>& channels);

// Makes the instruments. `automation` is a file of moves for all of them. The song must outlive
// the parts. Throws InputError when a setup does not fit the plug-in or the file is bad.
std::vector<Part> makeParts(const std::vector<PartPlan>& plans, const PluginLibrary& library,
                            const Song& song, const RenderSettings& settings,
                            const std::optional<std::string>& automation);

// "02-Organ", by fileName(): the channel, or "rest", and the program's name.
std::string stemName(const std::optional<int>& channel, const std::string& program);

} // namespace zelvatone
