// What a keyboard's pedals and faders do, for instruments that know notes and bends only.
#pragma once

#include "performance/MidiMessage.h"

#include <array>
#include <bitset>
#include <cstdint>

namespace zelvatone {

// What comes out of the controllers, in the order in which it is to happen. Called from within
// Controllers::take; `frame` is that of the message taken.
class ControllerOutput {
public:
    // A message for the instrument.
    virtual void play(const MidiMessage& message) = 0;
    // Scale the output by `gain`, 0 to 1, from this sample on: another one than before.
    virtual void setGain(float gain, std::int32_t frame) = 0;
    // End every note at this sample, without its release.
    virtual void stopSound(std::int32_t frame) = 0;
    // `program`: 0 to 127.
    virtual void chooseProgram(std::int32_t program, std::int32_t frame) = 0;

protected:
    ~ControllerOutput() = default;
};

// Takes MIDI in the order in which it is played. One thread; never allocates.
//
// - Sustain pedal (controller 64), for each channel: note-offs wait while it is down. A key that is
//   struck again meanwhile ends its old note first, or repeated notes would fill all slots.
// - Volume (7) and expression (11) set the gain, on General MIDI's curve of 40 dB a decade: each
//   scales by the square of its value / 127. All channels play one instrument, so the last one
//   holds, whatever its channel. Before the first of them nothing is scaled.
// - All sound off (120) stops the sound at once.
// - Reset all controllers (121) lifts the channel's pedal, brings expression to its full value and
//   centres the bend; volume stays, as General MIDI has it.
// - All notes off (123) and mono mode on (126), which implies it, are note-offs of the channel's
//   keys, and wait for the pedal like those. Instruments that know all notes off themselves end the
//   notes of all channels, and at the start of the block.
// - A program change asks for a program.
//
// All of these are handled here and not passed on. All other messages pass as they are.
class Controllers {
public:
    void take(const MidiMessage& message, ControllerOutput& output);
    // Pedals up, no gain: as after construction. Nothing is put out.
    void reset();
    // 0 to 1; 1 before the first volume and expression.
    float gain() const;

private:
    using Keys = std::bitset<128>;

    struct Channel {
        bool pedalIsDown = false;
        Keys down; // keys
        Keys held; // notes whose note-off waits
    };

    void takeNoteOn(const MidiMessage& message, ControllerOutput& output);
    void takeNoteOff(const MidiMessage& message, ControllerOutput& output);
    void takeController(const MidiMessage& message, ControllerOutput& output);
    void changeGain(std::int32_t Controllers::*part, std::int32_t value, const MidiMessage& message,
                    ControllerOutput& output);
    void takeAllNotesOff(const MidiMessage& message, ControllerOutput& output);
    void resetControllers(const MidiMessage& message, ControllerOutput& output);
    void liftPedal(const MidiMessage& message, ControllerOutput& output);
    void releaseKeys();

    std::array<Channel, 16> channels_;
    std::int32_t volume_ = 127;
    std::int32_t expression_ = 127;
};

} // namespace zelvatone
