// A song as an instrument plays it: messages at seconds, under a tempo and a meter.
#pragma once

#include "host/midi/MeterMap.h"
#include "host/midi/MidiFile.h"
#include "host/midi/TempoMap.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

// A MIDI message at a time. Songs have millions of them, so an event takes 16 bytes and no memory
// beside; an exclusive message lies in the song.
struct SongEvent {
    double seconds = 0.0;                // from the start
    std::array<std::uint8_t, 3> bytes{}; // a short message; of an exclusive one its 0xF0 alone
    std::uint8_t size = 0;               // bytes of a short message, 1 to 3
    std::uint32_t exclusive = 0;         // the number of an exclusive message in the song
};

// Exclusive messages one after the other.
class ExclusiveMessages {
public:
    // Returns the number of the new message, from 0.
    std::uint32_t append(std::span<const std::uint8_t> message);
    std::span<const std::uint8_t> operator[](std::uint32_t number) const;

private:
    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint32_t> ends_; // after each message
};

struct Song {
    std::vector<SongEvent> events; // by time; the file's order among equals
    TempoMap tempo;
    MeterMap meter;
    double seconds = 0.0; // to the end of the longest track
    ExclusiveMessages exclusives;
    std::string warning; // a line about what is wrong with the file, which is played; else empty

    // Appends a whole MIDI message, which is no meta event, of 1 to 3 bytes or an exclusive one.
    void add(double atSeconds, std::span<const std::uint8_t> message);
    // The message of an event of this song.
    std::span<const std::uint8_t> message(const SongEvent& event) const;
};

// A song of no length, at 120 quarter notes a minute.
Song songWithoutEvents();

// Merges the tracks. Tempo and time signature changes count in whichever track they stand. Throws
// InputError for a tempo that is none and for a song longer than a day.
Song makeSong(const MidiFile& file);

// Reads a MIDI file into a song. Throws InputError with the file's name.
Song readSong(const std::filesystem::path& path);

} // namespace zelvatone
