#include "host/midi/MidiFileReader.h"

#include "host/Error.h"
#include "host/files/FileBytes.h"
#include "host/midi/ByteReader.h"
#include "host/midi/MidiTrackParser.h"
#include "host/text/Format.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace zelvatone {

namespace {

// No score comes near it.
constexpr std::size_t kLargestFile = 64U << 20U;
constexpr std::uint32_t kHeaderLength = 6;

std::string_view asText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// The high byte is the negative number of film frames a second, the low byte their ticks.
MidiDivision filmDivision(std::uint16_t division) {
    struct FrameRate {
        int code;
        double perSecond;
    };
    // 29 stands for the 30 frames of colour television, which last 1.001 times as long.
    static constexpr std::array<FrameRate, 4> kRates{
        {{24, 24.0}, {25, 25.0}, {29, 30.0 / 1.001}, {30, 30.0}}};
    const int code = 256 - (division >> 8U);
    const int ticksPerFrame = division & 0xFF;
    const auto* const rate =
        std::find_if(kRates.begin(), kRates.end(), [&](const auto& r) { return r.code == code; });
    if (rate == kRates.end() || ticksPerFrame == 0) {
        throw InputError("its time is counted in film frames of an unknown kind");
    }
    return {0, rate->perSecond * ticksPerFrame};
}

MidiDivision readDivision(std::uint16_t division) {
    if (division >= 0x8000) {
        return filmDivision(division);
    }
    if (division == 0) {
        throw InputError("its header is damaged: no ticks in a quarter note");
    }
    return {division, 0.0};
}

MidiFile readHeader(ByteReader& reader, int& announcedTracks) {
    if (reader.remaining() < 4 || asText(reader.take(4)) != "MThd") {
        throw InputError("not a MIDI file");
    }
    const std::uint32_t length = reader.number32();
    if (length < kHeaderLength) {
        throw InputError("its header is damaged: shorter than six bytes");
    }
    MidiFile file;
    file.format = reader.number16();
    announcedTracks = reader.number16();
    const std::uint16_t division = reader.number16();
    reader.take(length - kHeaderLength); // what later versions may add
    if (file.format == 2) {
        throw InputError("format 2 (independent patterns) has no one way to play; 0 and 1 have");
    }
    if (file.format > 2) {
        throw InputError(formatText("its format {} is unknown", file.format));
    }
    file.division = readDivision(division);
    return file;
}

MidiTrack readTrack(std::span<const std::uint8_t> bytes, int number) {
    MidiTrackParser parser(bytes, number);
    while (parser.next()) {
    }
    return {bytes, number, parser.tick()};
}

// What can be read of a track whose length may be wrong.
struct PartOfTrack {
    MidiTrack track; // its whole messages
    bool hasEnded;   // the track says that it ends there
    bool isCut;      // inside a message
};

PartOfTrack readPart(std::span<const std::uint8_t> bytes, int number) {
    MidiTrackParser parser(bytes, number);
    bool isCut = false;
    try {
        while (parser.next()) {
        }
    } catch (const CutShort&) {
        isCut = true;
    }
    return {{bytes.first(parser.wholeBytes()), number, parser.tick()}, parser.hasEnded(), isCut};
}

// Whether something follows a track that is no part of it.
bool beginsChunk(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t kHead = 8;
    return bytes.size() >= kHead && std::all_of(bytes.begin(), bytes.begin() + 4, [](int letter) {
               return letter >= ' ' && letter <= '~';
           });
}

// Nothing that is played follows the last track, so it is known where it ends without its length:
// where it says so, or with the file. `rest` is the file from the track's first byte on.
MidiTrack readLastTrack(std::span<const std::uint8_t> rest, std::size_t length, int number,
                        std::string& warning) {
    const auto announced = rest.first(std::min(length, rest.size()));
    PartOfTrack part = readPart(announced, number);
    bool isWrong = !part.hasEnded && (part.isCut || length > rest.size());
    if (!part.hasEnded && length < rest.size() && !beginsChunk(rest.subspan(length))) {
        try {
            part = readPart(rest, number);
            isWrong = true;
        } catch (const InputError&) {
            isWrong = part.isCut; // what follows is something else
        }
    }
    if (isWrong) {
        warning = formatText("the length of track {} is wrong; what is there is played", number);
    }
    return part.track;
}

std::size_t lowestByteFirst(std::span<const std::uint8_t> bytes) {
    return bytes[0] | (bytes[1] << 8U) | (bytes[2] << 16U) | (std::size_t{bytes[3]} << 24U);
}

// An .rmi file is RIFF, chunks of a name, a size and so many bytes: the one that is named "data"
// holds the MIDI file. Any other file is one itself.
std::span<const std::uint8_t> midiPart(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t kRiffHead = 12;
    constexpr std::size_t kChunkHead = 8;
    if (bytes.size() < kRiffHead || asText(bytes.first(4)) != "RIFF" ||
        asText(bytes.subspan(8, 4)) != "RMID") {
        return bytes;
    }
    auto rest = bytes.subspan(kRiffHead);
    while (rest.size() >= kChunkHead) {
        const std::string_view name = asText(rest.first(4));
        const std::size_t size = lowestByteFirst(rest.subspan(4, 4));
        rest = rest.subspan(kChunkHead);
        if (name == "data") {
            return rest.first(std::min(size, rest.size()));
        }
        rest = rest.subspan(std::min(size + size % 2, rest.size())); // chunks begin at even places
    }
    throw InputError("a RIFF file without MIDI data");
}

// Reads the chunk at the front into `file` if it is a track.
void readChunk(ByteReader& reader, MidiFile& file, int announcedTracks) {
    const auto kind = asText(reader.take(4));
    const std::uint32_t length = reader.number32();
    if (kind != "MTrk") {
        reader.take(length);
        return;
    }
    const int number = static_cast<int>(file.tracks.size()) + 1;
    file.tracks.push_back(number < announcedTracks ? readTrack(reader.take(length), number)
                                                   : readLastTrack(reader.take(reader.remaining()),
                                                                   length, number, file.warning));
}

} // namespace

MidiFile parseMidiFile(std::vector<std::uint8_t> bytes) {
    ByteReader reader(midiPart(bytes), "the file");
    int announcedTracks = 0;
    MidiFile file = readHeader(reader, announcedTracks);
    while (static_cast<int>(file.tracks.size()) < announcedTracks) {
        if (reader.atEnd()) {
            throw InputError(formatText("the file is cut short: {} tracks announced, {} found",
                                        announcedTracks, file.tracks.size()));
        }
        readChunk(reader, file, announcedTracks);
    }
    if (file.tracks.empty()) {
        throw InputError("no tracks in it");
    }
    file.bytes = std::move(bytes); // stay where they are
    return file;
}

MidiFile readMidiFile(const std::filesystem::path& path) {
    try {
        return parseMidiFile(readBytes(path, kLargestFile, "MIDI file"));
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", path.string(), error.what()));
    }
}

} // namespace zelvatone
