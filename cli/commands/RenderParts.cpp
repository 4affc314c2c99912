#include "cli/commands/RenderParts.h"

#include "host/files/UserPath.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/Programs.h"
#include "host/plugin/ShownValue.h"
#include "host/render/Automation.h"
#include "host/render/ProgramMapFile.h"
#include "host/text/FileNames.h"
#include "host/text/Format.h"
#include "performance/GeneralMidi.h"
#include "performance/MidiMessage.h"

#include <algorithm>
#include <set>
#include <utility>

namespace zelvatone {

namespace {

constexpr int kDrums = kDrumChannel + 1;
constexpr int kChannels = 16;

// From 1; none for a message to the whole system.
std::optional<int> channelOf(const SongEvent& event) {
    const int status = event.bytes[0];
    return status < kSystemStatus ? std::optional((status & 0x0F) + 1) : std::nullopt;
}

// A velocity of 0 ends a note.
bool isNoteOn(const SongEvent& event) {
    return (event.bytes[0] & 0xF0) == kNoteOnStatus && event.bytes[2] > 0;
}

// Those with notes.
ChannelSet playingChannels(const Song& song) {
    ChannelSet playing;
    for (const SongEvent& event : song.events) {
        if (isNoteOn(event)) {
            playing.set(static_cast<std::size_t>(*channelOf(event)));
        }
    }
    return playing;
}

ChannelSet only(int channel) {
    return ChannelSet().set(static_cast<std::size_t>(channel));
}

PluginSetup channelSetup(const ChannelChoice& choice, const PluginSetup& setup) {
    PluginSetup own;
    own.settings = setup.settings;
    if (isPresetPath(choice.program)) {
        own.preset = readPresetFile(choice.program);
        return own;
    }
    own.program = choice.program;
    if (setup.preset && setup.preset->preset.isBank) {
        own.preset = setup.preset;
    }
    return own;
}

// The messages that a part receives. A message without a channel goes to every part.
EventSchedule::Filter receives(const PartPlan& plan) {
    return [plays = plan.plays](const SongEvent& event) {
        const auto channel = channelOf(event);
        return !channel || plays[static_cast<std::size_t>(*channel)];
    };
}

bool hasAllSoundOff(const Song& song, const PartPlan& plan) {
    return std::any_of(song.events.begin(), song.events.end(),
                       [&, isReceived = receives(plan)](const SongEvent& event) {
                           return (event.bytes[0] & 0xF0) == kControllerStatus &&
                                  event.bytes[1] == kAllSoundOff && isReceived(event);
                       });
}

std::vector<AutomationMove> readMoves(const std::string& file, HostedPlugin& plugin) {
    std::map<std::pair<int, std::string>, std::optional<float>> known; // a file may move one often
    const auto shown = [&](int parameter, std::string_view text) {
        const auto [value, isNew] = known.try_emplace({parameter, std::string(text)});
        if (isNew) {
            value->second = valueShownAs(plugin, parameter, text);
        }
        return value->second;
    };
    return readAutomation(userPath(file), parameterNames(plugin), shown);
}

// What is the same for all parts.
class PartMaker {
public:
    // `read`: the part whose instrument tells what names in `files` mean.
    PartMaker(const PluginLibrary& library, const Song& song, const RenderSettings& settings,
              const PartFiles& files, const PartPlan& read)
        : library_(library), song_(song), settings_(settings) {
        if (!files.automation && !files.programs) {
            return;
        }
        // Reading what a parameter shows moves it, and whole numbers do not come back as they were.
        HostedPlugin probe(library, settings.stream);
        applySetup(probe, read.setup);
        if (files.automation) {
            moves_ = scheduleMoves(readMoves(*files.automation, probe), settings.stream.sampleRate);
        }
        if (files.programs) {
            programs_ = readProgramMap(userPath(*files.programs), programNames(probe));
        }
    }

    Part make(const PartPlan& plan) const {
        Part part;
        part.plugin = makePlugin(plan);
        part.name = stemName(plan.channel, part.plugin->text(effGetProgramName));
        part.gain = plan.gain * settings_.gain;
        PerformerPlan performance;
        performance.isRaw = plan.isRaw;
        if (plan.followsPrograms) {
            performance.programs = programs_;
        }
        if (!plan.isRaw && hasAllSoundOff(song_, plan)) {
            part.spare = makePlugin(plan);
            performance.spare = part.spare.get();
        }
        part.player = std::make_unique<InstrumentPlayer>(
            *part.plugin, song_, EventSchedule(song_, settings_.stream.sampleRate, receives(plan)),
            moves_, performance);
        return part;
    }

private:
    std::unique_ptr<HostedPlugin> makePlugin(const PartPlan& plan) const {
        auto plugin = std::make_unique<HostedPlugin>(library_, settings_.stream);
        applySetup(*plugin, plan.setup);
        if (plan.followsPrograms) {
            setPrograms(*plugin, plan.setup.settings);
        }
        return plugin;
    }

    // Settings hold in every program that the song may choose.
    void setPrograms(HostedPlugin& plugin, const std::vector<ParameterSetting>& settings) const {
        const int start = currentProgram(plugin);
        std::set<int> chosen(programs_.begin(), programs_.end());
        chosen.erase(-1);
        chosen.erase(start);
        for (const int program : chosen) {
            selectProgram(plugin, program);
            applySettings(plugin, settings);
        }
        if (!chosen.empty()) {
            selectProgram(plugin, start);
        }
    }

    const PluginLibrary& library_;
    const Song& song_;
    const RenderSettings& settings_;
    AutomationSchedule moves_;
    ProgramMap programs_ = noPrograms();
};

} // namespace

std::vector<PartPlan> planParts(const Song& song, const RenderSettings& settings,
                                const PluginSetup& setup) {
    if (settings.layout == SongLayout::kRaw) {
        return {{.channel = {},
                 .plays = ~ChannelSet(),
                 .setup = setup,
                 .gain = 1.0F,
                 .isRaw = true,
                 .followsPrograms = false}};
    }
    const ChannelSet playing = playingChannels(song);
    std::vector<PartPlan> plans;
    ChannelSet rest;
    for (int channel = 1; channel <= kChannels; ++channel) {
        const auto named = settings.channels.find(channel);
        if (named != settings.channels.end()) {
            if (!named->second.isOff) {
                plans.push_back({.channel = channel,
                                 .plays = only(channel),
                                 .setup = channelSetup(named->second, setup),
                                 .gain = named->second.gain,
                                 .followsPrograms = false});
            }
        } else if (!playing[static_cast<std::size_t>(channel)] || channel == kDrums) {
            continue;
        } else if (settings.layout == SongLayout::kSplit) {
            plans.push_back(
                {.channel = channel, .plays = only(channel), .setup = setup, .gain = 1.0F});
        } else {
            rest |= only(channel);
        }
    }
    if (rest.any() || plans.empty()) {
        plans.push_back({.channel = {}, .plays = rest, .setup = setup, .gain = 1.0F});
    }
    return plans;
}

std::vector<int> silentChannels(const Song& song, const RenderSettings& settings) {
    const ChannelSet playing = playingChannels(song);
    std::vector<int> silent;
    for (const auto& [channel, choice] : settings.channels) {
        if (!choice.isOff && !playing[static_cast<std::size_t>(channel)]) {
            silent.push_back(channel);
        }
    }
    return silent;
}

bool leavesOutDrums(const Song& song, const RenderSettings& settings) {
    return settings.layout != SongLayout::kRaw && !settings.channels.contains(kDrums) &&
           playingChannels(song)[kDrums];
}

std::function<bool(const SongEvent&)> isPlayed(const std::vector<PartPlan>& plans) {
    ChannelSet played;
    for (const PartPlan& plan : plans) {
        played |= plan.plays;
    }
    return [played](const SongEvent& event) {
        const auto channel = channelOf(event);
        return channel && played[static_cast<std::size_t>(*channel)];
    };
}

std::vector<Part> makeParts(const std::vector<PartPlan>& plans, const PluginLibrary& library,
                            const Song& song, const RenderSettings& settings,
                            const PartFiles& files) {
    // A channel's own preset has another name for a program.
    const auto follower = std::find_if(plans.begin(), plans.end(),
                                       [](const PartPlan& plan) { return plan.followsPrograms; });
    const PartMaker maker(library, song, settings, files,
                          follower == plans.end() ? plans.at(0) : *follower);
    std::vector<Part> parts;
    parts.reserve(plans.size());
    for (const PartPlan& plan : plans) {
        parts.push_back(maker.make(plan));
    }
    return parts;
}

std::string stemName(const std::optional<int>& channel, const std::string& program) {
    return fileName(channel ? formatText("{:02}", *channel) : "rest", program);
}

} // namespace zelvatone
