// A Standard MIDI File as it stands in the file: tracks of messages at ticks, nothing interpreted.
#pragma once

#include <cstdint>
#include <vector>

namespace zelvatone {

// One message of a track. Channel messages carry their status (running status is resolved);
// a system exclusive message is whole, 0xF0 to 0xF7; a meta event is 0xFF, its kind, its data.
struct MidiFileEvent {
    std::int64_t tick = 0; // from the start of the file
    std::vector<std::uint8_t> bytes;
};

struct MidiTrack {
    std::vector<MidiFileEvent> events; // in file order, so ticks never fall
    std::int64_t endTick = 0;          // where the track says that it ends
};

// What a tick lasts: either a part of a quarter note, whose length the tempo gives, or a part of a
// film frame, which no tempo changes.
struct MidiDivision {
    int ticksPerQuarter = 0;     // 0 when the file counts film frames
    double ticksPerSecond = 0.0; // 0 when the file counts quarter notes
};

struct MidiFile {
    int format = 0; // 0: one track, 1: tracks that sound together
    MidiDivision division;
    std::vector<MidiTrack> tracks;
};

} // namespace zelvatone
