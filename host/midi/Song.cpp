#include "host/midi/Song.h"

#include "host/Error.h"
#include "host/midi/MidiFileReader.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kMetaTempo = 0x51;
constexpr std::uint8_t kMetaTimeSignature = 0x58;
// A damaged number can make a song of decades; a day is longer than any piece that is meant.
constexpr double kLongestSongSeconds = 24.0 * 60.0 * 60.0;

bool isMeta(const MidiFileEvent& event, std::uint8_t kind) {
    return event.bytes[0] == kMeta && event.bytes[1] == kind;
}

std::vector<const MidiFileEvent*> mergeTracks(const MidiFile& file) {
    std::vector<const MidiFileEvent*> merged;
    for (const MidiTrack& track : file.tracks) {
        for (const MidiFileEvent& event : track.events) {
            merged.push_back(&event);
        }
    }
    std::stable_sort(merged.begin(), merged.end(),
                     [](const auto* a, const auto* b) { return a->tick < b->tick; });
    return merged;
}

// Three bytes: microseconds a quarter note.
TempoMap::Change tempoChange(const MidiFileEvent& event) {
    const auto& bytes = event.bytes;
    if (bytes.size() != 5) {
        throw InputError("a tempo change is damaged");
    }
    const int microseconds = (bytes[2] << 16) | (bytes[3] << 8) | bytes[4];
    if (microseconds == 0) {
        throw InputError("a tempo change asks for infinitely many quarter notes a minute");
    }
    return {event.tick, microseconds * 1e-6};
}

TempoMap makeTempoMap(const MidiDivision& division,
                      const std::vector<const MidiFileEvent*>& events) {
    if (division.ticksPerQuarter == 0) {
        // Film frames pass at their own rate: the instrument is told the usual tempo, which turns
        // seconds into quarter notes, and tempo changes move nothing.
        return {division.ticksPerSecond * 60.0 / kTempoBeforeAnyChange, {}};
    }
    std::vector<TempoMap::Change> changes;
    for (const MidiFileEvent* event : events) {
        if (isMeta(*event, kMetaTempo)) {
            changes.push_back(tempoChange(*event));
        }
    }
    return {static_cast<double>(division.ticksPerQuarter), changes};
}

// Numerator, then the denominator as a power of two. One that makes no sense is passed over: it
// would only tell the instrument where bars start, and the notes stand without it.
MeterMap makeMeterMap(const TempoMap& tempo, const std::vector<const MidiFileEvent*>& events) {
    constexpr int largestPower = 6; // sixty-fourths, the shortest note that scores beat in
    std::vector<MeterMap::Change> changes;
    for (const MidiFileEvent* event : events) {
        const auto& bytes = event->bytes;
        if (isMeta(*event, kMetaTimeSignature) && bytes.size() >= 4 && bytes[2] > 0 &&
            bytes[3] <= largestPower) {
            changes.push_back({tempo.quartersAtTick(event->tick), bytes[2], 1 << bytes[3]});
        }
    }
    return MeterMap(std::move(changes));
}

double lengthInSeconds(const MidiFile& file, const TempoMap& tempo) {
    double seconds = 0.0;
    for (const MidiTrack& track : file.tracks) {
        seconds = std::max(seconds, tempo.secondsAtTick(track.endTick));
    }
    if (seconds > kLongestSongSeconds) {
        throw InputError("the song would last longer than a day");
    }
    return seconds;
}

} // namespace

Song makeSong(const MidiFile& file) {
    const auto merged = mergeTracks(file);
    const TempoMap tempo = makeTempoMap(file.division, merged);
    Song song{{}, tempo, makeMeterMap(tempo, merged), lengthInSeconds(file, tempo)};
    for (const MidiFileEvent* event : merged) {
        if (event->bytes[0] != kMeta) {
            song.events.push_back({tempo.secondsAtTick(event->tick), event->bytes});
        }
    }
    return song;
}

Song readSong(const std::filesystem::path& path) {
    const MidiFile file = readMidiFile(path);
    try {
        return makeSong(file);
    } catch (const InputError& error) {
        throw InputError(path.string() + ": " + error.what());
    }
}

} // namespace zelvatone
