// A MIDI message with the sample at which it is due, and MIDI's numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zelvatone {

// Status bytes of MIDI, without the channel.
inline constexpr std::uint8_t kNoteOffStatus = 0x80;
inline constexpr std::uint8_t kNoteOnStatus = 0x90;
inline constexpr std::uint8_t kKeyPressureStatus = 0xA0;
inline constexpr std::uint8_t kControllerStatus = 0xB0;
inline constexpr std::uint8_t kProgramStatus = 0xC0;
inline constexpr std::uint8_t kChannelPressureStatus = 0xD0;
inline constexpr std::uint8_t kBendStatus = 0xE0;
inline constexpr std::uint8_t kSystemStatus = 0xF0; // and above: without a channel

// Controllers by number.
inline constexpr std::uint8_t kDataEntry = 6;
inline constexpr std::uint8_t kVolume = 7;
inline constexpr std::uint8_t kExpression = 11;
inline constexpr std::uint8_t kDataEntryFine = 38;
inline constexpr std::uint8_t kSustainPedal = 64;
inline constexpr std::uint8_t kOtherParameterFine = 98; // of the maker's own parameters
inline constexpr std::uint8_t kOtherParameter = 99;
inline constexpr std::uint8_t kParameterFine = 100; // of the registered ones
inline constexpr std::uint8_t kParameter = 101;
inline constexpr std::uint8_t kAllSoundOff = 120;
inline constexpr std::uint8_t kResetAllControllers = 121;
inline constexpr std::uint8_t kAllNotesOff = 123;
inline constexpr std::uint8_t kMonoModeOn = 126; // implies all notes off

inline constexpr std::int32_t kBendCentre = 8192; // of 14 bits

struct MidiMessage {
    std::uint8_t kind() const { return status & 0xF0; }
    std::uint8_t channel() const { return status & 0x0F; }
    // How many bytes it has.
    std::size_t length() const {
        return kind() == kProgramStatus || kind() == kChannelPressureStatus ? 2 : 3;
    }

    std::int32_t frame;  // of the block
    std::uint8_t status; // with the channel
    std::uint8_t data1;  // 0 to 127, as is the next
    std::uint8_t data2;
};

// The message of these bytes. Data bytes have seven bits, whatever a host sends.
constexpr MidiMessage midiMessage(std::int32_t frame, std::uint8_t status, std::uint8_t data1,
                                  std::uint8_t data2) {
    return {.frame = frame,
            .status = status,
            .data1 = static_cast<std::uint8_t>(data1 & 0x7F),
            .data2 = static_cast<std::uint8_t>(data2 & 0x7F)};
}

// The same from `bytes`; missing ones are 0.
constexpr MidiMessage midiMessage(std::int32_t frame, std::span<const std::uint8_t> bytes) {
    const auto byte = [bytes](std::size_t index) {
        return index < bytes.size() ? bytes[index] : std::uint8_t{0};
    };
    return midiMessage(frame, byte(0), byte(1), byte(2));
}

} // namespace zelvatone
