// This file is why abi_tests is bound by the GNU GPL: it alone includes the free header.
//
// That header knows only what its author could observe in running programs. It lacks, or marks as
// guesses, and SharedNumbers.inc therefore leaves to PublishedLayout.cpp:
// - requests: offline (38 to 41), bypass (44), tail size (52), parameter properties (56), keys and
//   knob mode (59 to 61), MIDI program and key names (62, 64 to 66), begin and end of a program
//   change (67, 68), pan law (74), loading of banks (75, 76), MIDI channel counts (78, 79);
// - host services: idle (3), I/O changed (13), latencies (18, 19), automation state (24), vendor
//   specific (35), language (38), directory (41), display update (42);
// - AEffect: it reads `flags` as pointer-sized (the same bytes, on a little-endian machine), has
//   eight unnamed bytes for the two withdrawn qualities and ends before `future`;
// - VstMidiEvent between the head and the MIDI bytes, and after them; VstEvent after the head;
// - VstTimeInfo: places the two SMPTE fields after `flags` instead of before the clock, hence
//   another total size; both marked as guessed there;
// - VstPinProperties: the flag values, and the reserved bytes at the end;
// - text lengths: 25 for a program name (ours counts without the terminator), 128 for vendor and
//   product, which it marks as tried out with hosts rather than known.
#include "tests/abi/AbiNumbers.h"

#include <pluginterfaces/fst/fst.h>

#include <cstddef>

#define AEFFECT_IO_RATIO float1
#define AEFFECT_END sizeof(AEffect)
#define EVENT_HEAD_END sizeof(VstEvent)
#define PIN_PROPERTIES_END sizeof(VstPinProperties)

std::vector<AbiNumber> independentNumbers() {
    return {
#include "tests/abi/SharedNumbers.inc"
    };
}
