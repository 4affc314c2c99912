#include "host/midi/SongSummary.h"

#include "host/midi/EndlessNotes.h"
#include "host/midi/MidiTrackParser.h"
#include "host/midi/Song.h"
#include "performance/BendRange.h"
#include "performance/MidiMessage.h"

#include <algorithm>

namespace zelvatone {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int kExclusive = 0xF0;
constexpr int kMeta = 0xFF;
constexpr int kTrackName = 0x03;

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
    static void takeMeta(Bytes message, TrackSummary& track) {
        const Bytes data = message.subspan(2);
        if (message[1] == kTrackName && track.name.empty()) {
            track.name.assign(data.begin(), data.end());
        }
    }

    void takeChannelMessage(Bytes message, TrackSummary& track) {
        ChannelSummary& channel = summary_.channels[message[0] & 0x0FU];
        switch (message[0] & 0xF0) {
        case kNoteOnStatus:
            if (message[2] > 0) {
                takeNote(message[1], channel);
                ++track.notes;
            }
            break;
        case kKeyPressureStatus:
        case kChannelPressureStatus:
            ++channel.pressures;
            break;
        case kControllerStatus:
            channel.controllers.insert(message[1]);
            break;
        case kProgramStatus:
            channel.programs.insert(message[1]);
            break;
        case kBendStatus:
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

    SongSummary& summary_;
};

// In the order in which the song is played: tracks ask for the range of one channel together.
void takeBendRanges(const Song& song, SongSummary& summary) {
    BendRange ranges(kInstrumentBendRange);
    for (const SongEvent& event : song.events) {
        if (event.bytes[0] >= kSystemStatus) {
            continue;
        }
        const MidiMessage message = midiMessage(0, event.bytes);
        const auto played = ranges.take(message);
        const bool setsRange =
            message.kind() == kControllerStatus && (!played || played->kind() == kBendStatus);
        if (setsRange) {
            auto& range = summary.channels[message.channel()].bendRange;
            range = std::max(range.value_or(0.0), ranges.cents(message.channel()) / 100.0);
        }
    }
}

} // namespace

SongSummary summarise(const MidiFile& file) {
    const Song song = makeSong(file);
    SongSummary summary;
    summary.seconds = song.seconds;
    summary.endlessNotes = endlessNotes(song);
    takeBendRanges(song, summary);
    Counter counter(summary);
    for (const MidiTrack& track : file.tracks) {
        TrackSummary& counted = summary.tracks.emplace_back();
        counted.number = track.number;
        MidiTrackParser parser(track.bytes, track.number);
        while (parser.next()) {
            counter.take(parser.message(), counted);
        }
    }
    summary.startTempo = song.tempo.tempoAtSeconds(0.0);
    summary.lowestTempo = song.tempo.tempoRange().lowest;
    summary.highestTempo = song.tempo.tempoRange().highest;
    const MeterMap::Bar bar = song.meter.barAt(0.0);
    summary.beats = bar.numerator;
    summary.beatUnit = bar.denominator;
    summary.meterChanges = song.meter.changeCount();
    return summary;
}

} // namespace zelvatone
