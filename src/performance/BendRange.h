// Pitch bends of the range that a channel asks for, on an instrument with one range of its own.
#pragma once

#include "performance/MidiMessage.h"

#include <array>
#include <cstdint>
#include <optional>

namespace zelvatone {

// How far Zelvatone bends at either end of the wheel, in semitones.
inline constexpr std::int32_t kInstrumentBendRange = 12;

// Moves the pitch wheel so that the instrument bends by the channel's range: 2 semitones, as
// General MIDI has it, until registered parameter 0 sets another one by data entry, in semitones
// (controller 6) and cents (38). What is asked for beyond the instrument's range is played at its
// end. Every channel has its own range. One thread; never allocates.
class BendRange {
public:
    // `semitones`, above 0: how far the instrument bends at either end of the wheel.
    explicit BendRange(std::int32_t semitones) : instrumentCents_(semitones * 100) {}

    // What to play in place of the message: itself, with another place of the wheel for a bend. A
    // data entry that sets the range gives the bend that the wheel means from now on, or nothing
    // while the wheel is centred. `message` has the order in which it is played.
    std::optional<MidiMessage> take(const MidiMessage& message);
    // How far `channel`, 0 to 15, means to bend, in cents.
    std::int32_t cents(std::uint8_t channel) const {
        return channels_[channel].semitones * 100 + channels_[channel].cents;
    }

private:
    struct Channel {
        // The registered parameter that data entry sets, in two halves; 127 each for none.
        std::uint8_t parameter = 127;
        std::uint8_t parameterFine = 127;
        std::int32_t semitones = 2;
        std::int32_t cents = 0;
        std::int32_t wheel = 0; // from the centre
    };

    std::optional<MidiMessage> takeController(const MidiMessage& message);
    MidiMessage bend(const MidiMessage& cause) const;

    std::int32_t instrumentCents_;
    std::array<Channel, 16> channels_;
};

} // namespace zelvatone
