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

struct Chunk {
    std::string_view kind; // four characters
    std::span<const std::uint8_t> content;
};

std::string_view asText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Chunk takeChunk(ByteReader& reader) {
    const auto kind = asText(reader.take(4));
    const std::uint32_t length = reader.number32();
    return {kind, reader.take(length)};
}

// The high byte is the negative number of film frames a second, the low byte their ticks.
MidiDivision filmDivision(std::uint16_t division) {
    struct FrameRate {
        int code;
        double perSecond;
    };
    // 29 stands for the 30 frames of colour television, which last 1.001 times as long.
    static constexpr std::array<FrameRate, 4> rates{
        {{24, 24.0}, {25, 25.0}, {29, 30.0 / 1.001}, {30, 30.0}}};
    const int code = 256 - (division >> 8U);
    const int ticksPerFrame = division & 0xFF;
    const auto* const rate =
        std::find_if(rates.begin(), rates.end(), [&](const auto& r) { return r.code == code; });
    if (rate == rates.end() || ticksPerFrame == 0) {
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

} // namespace

MidiFile parseMidiFile(std::vector<std::uint8_t> bytes) {
    ByteReader reader(bytes, "the file");
    int announcedTracks = 0;
    MidiFile file = readHeader(reader, announcedTracks);
    while (static_cast<int>(file.tracks.size()) < announcedTracks) {
        if (reader.atEnd()) {
            throw InputError(formatText("the file is cut short: {} tracks announced, {} found",
                                        announcedTracks, file.tracks.size()));
        }
        const Chunk chunk = takeChunk(reader);
        if (chunk.kind == "MTrk") {
            const int number = static_cast<int>(file.tracks.size()) + 1;
            file.tracks.push_back(readTrack(chunk.content, number));
        }
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
