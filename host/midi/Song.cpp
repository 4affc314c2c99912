#include "host/midi/Song.h"

#include "host/Error.h"
#include "host/midi/MidiFileReader.h"
#include "host/midi/TrackMerger.h"
#include "host/text/Format.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kMetaTempo = 0x51;
constexpr std::uint8_t kMetaTimeSignature = 0x58;
// A damaged number can make a song of decades; a day is longer than any piece that is meant.
constexpr double kLongestSongSeconds = 24.0 * 60.0 * 60.0;

using Bytes = std::span<const std::uint8_t>;

bool isMeta(Bytes message, std::uint8_t kind) {
    return message[0] == kMeta && message[1] == kind;
}

// How many messages are what; lists of them are made as large as they become.
struct Counts {
    std::size_t events = 0;
    std::size_t tempos = 0;
    std::size_t meters = 0;
};

Counts countMessages(const MidiFile& file) {
    Counts counts;
    for (const MidiTrack& track : file.tracks) {
        MidiTrackParser parser(track.bytes, track.number);
        while (parser.next()) {
            counts.events += parser.message()[0] != kMeta ? 1 : 0;
            counts.tempos += isMeta(parser.message(), kMetaTempo) ? 1 : 0;
            counts.meters += isMeta(parser.message(), kMetaTimeSignature) ? 1 : 0;
        }
    }
    return counts;
}

// Three bytes: microseconds a quarter note.
double secondsPerQuarter(Bytes tempo) {
    if (tempo.size() != 5) {
        throw InputError("a tempo change is damaged");
    }
    const int microseconds = (tempo[2] << 16) | (tempo[3] << 8) | tempo[4];
    if (microseconds == 0) {
        throw InputError("a tempo change asks for infinitely many quarter notes a minute");
    }
    return microseconds * 1e-6;
}

TempoMap makeTempoMap(const MidiFile& file, std::size_t count) {
    if (file.division.ticksPerQuarter == 0) {
        // Film frames pass at their own rate: the instrument is told the usual tempo, which turns
        // seconds into quarter notes, and tempo changes move nothing.
        return {file.division.ticksPerSecond * 60.0 / kTempoBeforeAnyChange, {}};
    }
    std::vector<TempoMap::Change> changes;
    changes.reserve(count);
    for (TrackMerger merger(file); merger.next();) {
        if (isMeta(merger.message(), kMetaTempo)) {
            changes.push_back({merger.tick(), secondsPerQuarter(merger.message())});
        }
    }
    return {static_cast<double>(file.division.ticksPerQuarter), changes};
}

// Numerator, then the denominator as a power of two. One that makes no sense is skipped: it would
// only tell the instrument where bars start, and the notes stand without it.
MeterMap makeMeterMap(const MidiFile& file, const TempoMap& tempo, std::size_t count) {
    constexpr int kLargestPower = 6; // sixty-fourths, the shortest note that scores beat in
    std::vector<MeterMap::Change> changes;
    changes.reserve(count + 1); // and the one that holds from the start
    for (TrackMerger merger(file); count > 0 && merger.next();) {
        const Bytes bytes = merger.message();
        if (isMeta(bytes, kMetaTimeSignature) && bytes.size() >= 4 && bytes[2] > 0 &&
            bytes[3] <= kLargestPower) {
            changes.push_back({tempo.quartersAtTick(merger.tick()), bytes[2], 1 << bytes[3]});
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

std::uint32_t ExclusiveMessages::append(Bytes message) {
    bytes_.insert(bytes_.end(), message.begin(), message.end());
    ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    return static_cast<std::uint32_t>(ends_.size() - 1);
}

Bytes ExclusiveMessages::operator[](std::uint32_t number) const {
    const std::size_t start = number == 0 ? 0 : ends_[number - 1];
    return Bytes(bytes_).subspan(start, ends_[number] - start);
}

void Song::add(double atSeconds, Bytes message) {
    SongEvent event;
    event.seconds = atSeconds;
    event.bytes[0] = message[0];
    if (message[0] == kExclusive) {
        event.exclusive = exclusives.append(message);
    } else {
        std::copy(message.begin(), message.end(), event.bytes.begin());
        event.size = static_cast<std::uint8_t>(message.size());
    }
    events.push_back(event);
}

Bytes Song::message(const SongEvent& event) const {
    return event.bytes[0] == kExclusive ? exclusives[event.exclusive]
                                        : Bytes(event.bytes).first(event.size);
}

Song songWithoutEvents() {
    return {{}, TempoMap(1.0, {}), MeterMap({}), 0.0, {}, {}};
}

Song makeSong(const MidiFile& file) {
    const Counts counts = countMessages(file);
    const TempoMap tempo = makeTempoMap(file, counts.tempos);
    Song song{{}, tempo, makeMeterMap(file, tempo, counts.meters), lengthInSeconds(file, tempo),
              {}, {}};
    song.events.reserve(counts.events);
    for (TrackMerger merger(file); merger.next();) {
        if (merger.message()[0] != kMeta) {
            song.add(tempo.secondsAtTick(merger.tick()), merger.message());
        }
    }
    return song;
}

Song readSong(const std::filesystem::path& path) {
    const MidiFile file = readMidiFile(path);
    try {
        Song song = makeSong(file);
        song.warning =
            file.warning.empty() ? "" : formatText("{}: {}", path.string(), file.warning);
        return song;
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", path.string(), error.what()));
    }
}

} // namespace zelvatone
