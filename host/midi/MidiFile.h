// A Standard MIDI File as it stands in the file: tracks of messages, nothing interpreted.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

// The messages of a track are read where they lie, see MidiTrackParser: a file of many events would
// fill the memory otherwise.
struct MidiTrack {
    std::span<const std::uint8_t> bytes; // of whole messages, in the file's bytes
    int number = 0;                      // from 1
    std::int64_t endTick = 0;            // where the track says that it ends
};

// What a tick lasts: either a part of a quarter note, whose length the tempo gives, or a part of a
// film frame, which no tempo changes.
struct MidiDivision {
    int ticksPerQuarter = 0;     // 0 when the file counts film frames
    double ticksPerSecond = 0.0; // 0 when the file counts quarter notes
};

struct MidiFile {
    MidiFile() = default;
    // The tracks point into the bytes.
    MidiFile(const MidiFile&) = delete;
    MidiFile& operator=(const MidiFile&) = delete;
    MidiFile(MidiFile&&) = default;
    MidiFile& operator=(MidiFile&&) = default;
    ~MidiFile() = default;

    int format = 0; // 0: one track, 1: tracks that sound together
    MidiDivision division;
    std::vector<MidiTrack> tracks;
    std::vector<std::uint8_t> bytes; // the whole file
    // What is wrong with the file and was put up with, as a line without the file's name; else
    // empty.
    std::string warning;
};

} // namespace zelvatone
