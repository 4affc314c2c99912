#include "host/midi/SongSummary.h"

#include "host/midi/EndlessNotes.h"
#include "host/midi/MidiTrackParser.h"
#include "host/midi/Song.h"

#include <algorithm>

namespace zelvatone {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int kNoteOn = 0x90;
constexpr int kKeyPressure = 0xA0;
constexpr int kController = 0xB0;
constexpr int kProgram = 0xC0;
constexpr int kChannelPressure = 0xD0;
constexpr int kBend = 0xE0;
constexpr int kExclusive = 0xF0;
constexpr int kMeta = 0xFF;
constexpr int kTrackName = 0x03;
constexpr int kTimeSignature = 0x58;

// Controllers that choose a parameter by two numbers, and its value.
constexpr int kDataEntry = 6;
constexpr int kParameterLow = 100;
constexpr int kParameterHigh = 101;

// Which registered parameter a channel's data entry sets; 0 is the bend range.
struct Chosen {
    int high = 127;
    int low = 127;
};

class Counter {
public:
    explicit Counter(SongSummary& summary) : summary_(summary) {}

    void take(Bytes message, TrackSummary& track) {
        if (message[0] == kMeta) {
            takeMeta(message, track);
        } else if (message[0] == kExclusive) {
            ++summary_.exclusives;
        } else if (message[0] < kExclusive) {
            takeChannelMessage(message, track);
        }
    }

private:
    void takeMeta(Bytes message, TrackSummary& track) const {
        const Bytes data = message.subspan(2);
        if (message[1] == kTrackName && track.name.empty()) {
            track.name.assign(data.begin(), data.end());
        } else if (message[1] == kTimeSignature) {
            ++summary_.meterChanges;
        }
    }

    void takeChannelMessage(Bytes message, TrackSummary& track) {
        ChannelSummary& channel = summary_.channels[message[0] & 0x0FU];
        switch (message[0] & 0xF0) {
        case kNoteOn:
            if (message[2] > 0) {
                takeNote(message[1], channel);
                ++track.notes;
            }
            break;
        case kKeyPressure:
        case kChannelPressure:
            ++channel.pressures;
            break;
        case kController:
            takeController(message, channel);
            break;
        case kProgram:
            channel.programs.insert(message[1]);
            break;
        case kBend:
            ++channel.bends;
            break;
        default:
            break;
        }
    }

    static void takeNote(int note, ChannelSummary& channel) {
        ++channel.notes;
        channel.lowest = std::min(channel.lowest, note);
        channel.highest = std::max(channel.highest, note);
    }

    void takeController(Bytes message, ChannelSummary& channel) {
        Chosen& chosen = chosen_[message[0] & 0x0FU];
        channel.controllers.insert(message[1]);
        if (message[1] == kParameterHigh) {
            chosen.high = message[2];
        } else if (message[1] == kParameterLow) {
            chosen.low = message[2];
        } else if (message[1] == kDataEntry && chosen.high == 0 && chosen.low == 0) {
            channel.bendRange = message[2];
        }
    }

    SongSummary& summary_;
    std::array<Chosen, 16> chosen_;
};

// At the start and wherever the tempo changes: those are the ends of its stretches.
void addTempos(const MidiFile& file, const Song& song, SongSummary& summary) {
    summary.startTempo = song.tempo.tempoAtSeconds(0.0);
    summary.lowestTempo = summary.startTempo;
    summary.highestTempo = summary.startTempo;
    for (const MidiTrack& track : file.tracks) {
        MidiTrackParser parser(track.bytes, track.number);
        while (parser.next()) {
            const double tempo = song.tempo.tempoAtSeconds(song.tempo.secondsAtTick(parser.tick()));
            summary.lowestTempo = std::min(summary.lowestTempo, tempo);
            summary.highestTempo = std::max(summary.highestTempo, tempo);
        }
    }
}

} // namespace

SongSummary summarise(const MidiFile& file) {
    const Song song = makeSong(file);
    SongSummary summary;
    summary.seconds = song.seconds;
    summary.endlessNotes = endlessNotes(song);
    Counter counter(summary);
    for (const MidiTrack& track : file.tracks) {
        TrackSummary& counted = summary.tracks.emplace_back();
        counted.number = track.number;
        MidiTrackParser parser(track.bytes, track.number);
        while (parser.next()) {
            counter.take(parser.message(), counted);
        }
    }
    addTempos(file, song, summary);
    const MeterMap::Bar bar = song.meter.barAt(0.0);
    summary.beats = bar.numerator;
    summary.beatUnit = bar.denominator;
    summary.meterChanges = std::max(summary.meterChanges - 1, 0); // the first one is the start's
    return summary;
}

} // namespace zelvatone
