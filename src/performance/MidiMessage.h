// A MIDI message with the sample at which it is due.
#pragma once

#include <cstdint>

namespace zelvatone {

// Status bytes of MIDI, without the channel.
inline constexpr std::uint8_t kNoteOffStatus = 0x80;
inline constexpr std::uint8_t kNoteOnStatus = 0x90;
inline constexpr std::uint8_t kControllerStatus = 0xB0;
inline constexpr std::uint8_t kProgramStatus = 0xC0;
inline constexpr std::uint8_t kBendStatus = 0xE0;

struct MidiMessage {
    std::uint8_t kind() const { return status & 0xF0; }
    std::uint8_t channel() const { return status & 0x0F; }

    std::int32_t frame;  // of the block
    std::uint8_t status; // with the channel
    std::uint8_t data1;  // 0 to 127, as is the next
    std::uint8_t data2;
};

} // namespace zelvatone
