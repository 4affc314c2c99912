// Reads Standard MIDI Files of format 0 and 1. Bytes come from anywhere, so nothing in them is
// believed: every length is checked against what is there.
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
