// A song as an instrument plays it: messages at seconds, under a tempo and a meter.
#pragma once

#include "host/midi/MeterMap.h"
#include "host/midi/MidiFile.h"
#include "host/midi/TempoMap.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace zelvatone {

struct SongEvent {
    double seconds = 0.0;            // from the start
    std::vector<std::uint8_t> bytes; // a whole MIDI message; no meta events
};

struct Song {
    std::vector<SongEvent> events; // by time; the file's order among equals
    TempoMap tempo;
    MeterMap meter;
    double seconds = 0.0; // to the end of the longest track
};

// Merges the tracks. Tempo and time signature changes count in whichever track they stand. Throws
// InputError for a tempo that is none and for a song longer than a day.
Song makeSong(const MidiFile& file);

// Reads a MIDI file into a song. Throws InputError with the file's name.
Song readSong(const std::filesystem::path& path);

} // namespace zelvatone
