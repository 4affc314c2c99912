#include "cli/commands/SongCommand.h"

#include "cli/commands/RenderReport.h"
#include "cli/terminal/Notice.h"
#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/midi/MidiFileReader.h"
#include "host/midi/SongSummary.h"
#include "host/plugin/PluginText.h"
#include "host/text/Format.h"
#include "host/text/Json.h"
#include "host/text/Table.h"
#include "performance/BendRange.h"
#include "performance/GeneralMidi.h"
#include "performance/MidiMessage.h"

#include <CLI/CLI.hpp>

#include <cmath>

namespace zelvatone {

namespace {

// "C4" for 60.
std::string noteName(int note) {
    static constexpr std::array kNames{"C",  "C#", "D",  "D#", "E",  "F",
                                       "F#", "G",  "G#", "A",  "A#", "B"};
    return formatText("{}{}", kNames[static_cast<std::size_t>(note % 12)], note / 12 - 1);
}

std::string channelName(std::size_t channel) {
    return formatText("{}{}", channel + 1, channel == kDrumChannel ? " (drums)" : "");
}

std::string numberList(const std::set<int>& numbers) {
    std::string text;
    for (const int number : numbers) {
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    }
    return text;
}

// Which controllers `render` plays.
bool isPlayed(int controller) {
    switch (controller) {
    case kDataEntry: // of the bend range
    case kDataEntryFine:
    case kParameter:
    case kParameterFine:
    case kVolume:
    case kExpression:
    case kSustainPedal:
    case kAllSoundOff:
    case kResetAllControllers:
    case kAllNotesOff:
    case kMonoModeOn:
        return true;
    default:
        return false;
    }
}

// What the channels hold that is not played.
struct NotPlayed {
    explicit NotPlayed(const SongSummary& song) {
        for (const ChannelSummary& channel : song.channels) {
            controllers.insert(channel.controllers.begin(), channel.controllers.end());
            programs.insert(channel.programs.begin(), channel.programs.end());
            hasPressure |= channel.pressures > 0;
        }
        std::erase_if(controllers, isPlayed);
    }

    std::set<int> controllers;
    std::set<int> programs;
    bool hasPressure = false;
};

// A line for each channel that bends further than the instrument does.
std::vector<std::string> bendLines(const SongSummary& song) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < song.channels.size(); ++i) {
        const ChannelSummary& channel = song.channels[i];
        if (channel.bends > 0 && channel.bendRange.value_or(0) > kInstrumentBendRange) {
            lines.push_back(formatText("bends of channel {} beyond {} semitones: the file asks for "
                                       "{}, the instrument ends there",
                                       i + 1, kInstrumentBendRange, *channel.bendRange));
        }
    }
    return lines;
}

// What `render` does not play of the file, and why; a line each.
std::vector<std::string> ignoredLines(const SongSummary& song) {
    const NotPlayed ignored(song);
    std::vector<std::string> lines = bendLines(song);
    if (song.channels[kDrumChannel].notes > 0) {
        lines.emplace_back("channel 10 (drums): --channel 10=PROGRAM plays it");
    }
    if (!ignored.controllers.empty()) {
        lines.push_back(formatText("controllers {}: the instrument has none of them",
                                   numberList(ignored.controllers)));
    }
    if (!ignored.programs.empty()) {
        lines.push_back(formatText("program changes {}: --programs FILE says what they choose",
                                   numberList(ignored.programs)));
    }
    if (ignored.hasPressure) {
        lines.emplace_back("pressure of keys: the instrument has no use for it");
    }
    if (song.exclusives > 0) {
        lines.push_back(
            formatText("{} exclusive messages: they are for other instruments", song.exclusives));
    }
    return lines;
}

std::string tempoText(const SongSummary& song) {
    const std::string start = formatText("{:.2f} quarter notes a minute", song.startTempo);
    return song.lowestTempo == song.highestTempo
               ? start
               : formatText("{}, {:.2f} to {:.2f}", start, song.lowestTempo, song.highestTempo);
}

std::string trackTable(const SongSummary& song) {
    std::vector<std::vector<std::string>> lines{{"Track", "Notes", "Name"}};
    for (const TrackSummary& track : song.tracks) {
        lines.push_back(
            {std::to_string(track.number), std::to_string(track.notes), cleanText(track.name)});
    }
    return tableText(lines, {true, true, false});
}

std::string channelTable(const SongSummary& song) {
    std::vector<std::vector<std::string>> lines{
        {"Channel", "Notes", "Range", "Bends", "Programs", "Controllers"}};
    for (std::size_t i = 0; i < song.channels.size(); ++i) {
        const ChannelSummary& channel = song.channels[i];
        if (channel.isUsed()) {
            lines.push_back({channelName(i), std::to_string(channel.notes),
                             channel.notes == 0 ? ""
                                                : formatText("{} to {}", noteName(channel.lowest),
                                                             noteName(channel.highest)),
                             std::to_string(channel.bends), numberList(channel.programs),
                             numberList(channel.controllers)});
        }
    }
    return tableText(lines, {false, true, false, true, false, false});
}

std::string asText(const SongSummary& song) {
    std::string text =
        formatText("Length  {}\nTempo   {}\nMetre   {}/{}{}\n\n{}\n{}", lengthText(song.seconds),
                   tempoText(song), song.beats, song.beatUnit,
                   song.meterChanges == 0 ? "" : formatText(", changes: {}", song.meterChanges),
                   trackTable(song), channelTable(song));
    if (song.endlessNotes > 0) {
        text += formatText("\nNotes that do not end: {}\n", song.endlessNotes);
    }
    const auto ignored = ignoredLines(song);
    text += ignored.empty() ? "" : "\nNot played\n";
    for (const std::string& line : ignored) {
        text += "  " + line + "\n";
    }
    return text;
}

Json channelJson(std::size_t number, const ChannelSummary& channel) {
    Json json{{"channel", number + 1},
              {"drums", number == kDrumChannel},
              {"notes", channel.notes},
              {"bends", channel.bends},
              {"controllers", channel.controllers},
              {"programs", channel.programs},
              {"pressures", channel.pressures}};
    if (channel.notes > 0) {
        json["lowestNote"] = channel.lowest;
        json["highestNote"] = channel.highest;
    }
    if (channel.bendRange) {
        json["bendRange"] = *channel.bendRange;
    }
    return json;
}

Json asJson(const SongSummary& song) {
    Json tracks = Json::array();
    for (const TrackSummary& track : song.tracks) {
        tracks.push_back(
            {{"number", track.number}, {"name", cleanText(track.name)}, {"notes", track.notes}});
    }
    Json channels = Json::array();
    for (std::size_t i = 0; i < song.channels.size(); ++i) {
        if (song.channels[i].isUsed()) {
            channels.push_back(channelJson(i, song.channels[i]));
        }
    }
    return {{"seconds", song.seconds},
            {"tempo", song.startTempo},
            {"lowestTempo", song.lowestTempo},
            {"highestTempo", song.highestTempo},
            {"beats", song.beats},
            {"beatUnit", song.beatUnit},
            {"meterChanges", song.meterChanges},
            {"endlessNotes", song.endlessNotes},
            {"exclusives", song.exclusives},
            {"tracks", tracks},
            {"channels", channels},
            {"notPlayed", ignoredLines(song)}};
}

} // namespace

CLI::App* addSongCommand(CLI::App& app, SongOptions& options) {
    CLI::App* command = app.add_subcommand("song", "Show what a MIDI file holds");
    command->add_option("song", options.song, "The MIDI file, of format 0 or 1, or an .rmi file")
        ->required()
        ->type_name("SONG.mid");
    command->add_flag("--json", options.json, "Write JSON, for programs to read");
    command->footer("Examples:\n"
                    "  zelvatone song song.mid\n"
                    "  zelvatone song song.mid --json");
    return command;
}

void runSong(const SongOptions& options, const StandardOutput& output) {
    const MidiFile file = readMidiFile(userPath(options.song));
    if (!file.warning.empty()) {
        printNotice(formatText("{}: {}", options.song, file.warning));
    }
    SongSummary song;
    try {
        song = summarise(file);
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", options.song, error.what()));
    }
    output.print(options.json ? jsonText(asJson(song)) : asText(song));
}

} // namespace zelvatone
