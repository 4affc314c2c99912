// Reads Standard MIDI Files of format 0 and 1, by themselves or in a RIFF file (.rmi). Bytes come
// from anywhere, so nothing in them is believed: every length is checked against what is there. A
// wrong length of the last track does no harm: it is read up to its end mark or its last whole
// message.
#pragma once

#include "host/midi/MidiFile.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace zelvatone {

// Throws InputError with the file's name for a file that is missing, unreadable, no MIDI file,
// cut short or damaged.
MidiFile readMidiFile(const std::filesystem::path& path);

// The same from memory; the error's text names no file.
MidiFile parseMidiFile(std::vector<std::uint8_t> bytes);

} // namespace zelvatone
