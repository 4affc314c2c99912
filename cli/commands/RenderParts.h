// Which instruments a rendering has, and what each of them plays.
#pragma once

#include "cli/commands/RenderSettings.h"
#include "cli/commands/SetupOptions.h"
#include "host/midi/Song.h"
#include "host/plugin/PluginLibrary.h"
#include "host/render/Ensemble.h"

#include <bitset>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace zelvatone {

using ChannelSet = std::bitset<17>; // channels count from 1

// One instrument to be made.
struct PartPlan {
    std::optional<int> channel; // that it is named for; none: for the rest
    ChannelSet plays;
    PluginSetup setup;
    float gain; // factor
    bool isRaw = false;
    bool followsPrograms = true;
};

// A part for every channel that settings name, each with the bank and the settings of `setup`, and
// parts with all of `setup` for the other channels on which the song has notes, except channel 10:
// by channel, or one for all of them, the last. One part for everything where the file is played
// raw; at least one. Throws InputError for a bad preset file.
std::vector<PartPlan> planParts(const Song& song, const RenderSettings& settings,
                                const PluginSetup& setup);

// Those that settings name, and not as off, and on which the song has no note.
std::vector<int> silentChannels(const Song& song, const RenderSettings& settings);
// Whether the song has notes on channel 10 that settings do not name.
bool leavesOutDrums(const Song& song, const RenderSettings& settings);
// Whether one of the parts gets an event.
std::function<bool(const SongEvent&)> isPlayed(const std::vector<PartPlan>& plans);

// Files for all of the instruments.
struct PartFiles {
    std::optional<std::string> automation; // of moves
    std::optional<std::string> programs;   // of program changes
};

// Makes the instruments. The song must outlive the parts. Throws InputError when a setup does not
// fit the plug-in or a file is bad.
std::vector<Part> makeParts(const std::vector<PartPlan>& plans, const PluginLibrary& library,
                            const Song& song, const RenderSettings& settings,
                            const PartFiles& files);

// "02-Organ", by fileName(): the channel, or "rest", and the program's name.
std::string stemName(const std::optional<int>& channel, const std::string& program);

} // namespace zelvatone
