#include "performance/Controllers.h"

namespace zelvatone {

namespace {

constexpr std::int32_t kFullScale = 127;
constexpr std::uint8_t kPedalDown = 64; // from here on, as MIDI divides a switch's values

float squaredShare(std::int32_t value) {
    const float share = static_cast<float>(value) / static_cast<float>(kFullScale);
    return share * share;
}

MidiMessage noteOff(const MidiMessage& cause, std::size_t note) {
    return {.frame = cause.frame,
            .status = static_cast<std::uint8_t>(kNoteOffStatus | cause.channel()),
            .data1 = static_cast<std::uint8_t>(note),
            .data2 = 0};
}

void endNotes(const std::bitset<128>& notes, const MidiMessage& cause, ControllerOutput& output) {
    for (std::size_t note = 0; note < notes.size(); ++note) {
        if (notes.test(note)) {
            output.play(noteOff(cause, note));
        }
    }
}

} // namespace

void Controllers::take(const MidiMessage& message, ControllerOutput& output) {
    switch (message.kind()) {
    case kNoteOnStatus:
        if (message.data2 != 0) {
            takeNoteOn(message, output);
            break;
        }
        [[fallthrough]]; // velocity 0 is a note-off
    case kNoteOffStatus:
        takeNoteOff(message, output);
        break;
    case kControllerStatus:
        takeController(message, output);
        break;
    case kProgramStatus:
        output.chooseProgram(message.data1, message.frame);
        break;
    default:
        output.play(message);
        break;
    }
}

void Controllers::reset() {
    *this = Controllers();
}

float Controllers::gain() const {
    return squaredShare(volume_) * squaredShare(expression_);
}

void Controllers::takeNoteOn(const MidiMessage& message, ControllerOutput& output) {
    Channel& channel = channels_[message.channel()];
    const std::size_t note = message.data1 & 0x7F;
    if (channel.held.test(note)) {
        channel.held.reset(note);
        output.play(noteOff(message, note));
    }
    channel.down.set(note);
    output.play(message);
}

void Controllers::takeNoteOff(const MidiMessage& message, ControllerOutput& output) {
    Channel& channel = channels_[message.channel()];
    const std::size_t note = message.data1 & 0x7F;
    channel.down.reset(note);
    if (channel.pedalIsDown) {
        channel.held.set(note);
    } else {
        output.play(message);
    }
}

void Controllers::takeController(const MidiMessage& message, ControllerOutput& output) {
    switch (message.data1) {
    case kVolume:
        changeGain(&Controllers::volume_, message.data2, message, output);
        break;
    case kExpression:
        changeGain(&Controllers::expression_, message.data2, message, output);
        break;
    case kSustainPedal:
        if (message.data2 >= kPedalDown) {
            channels_[message.channel()].pedalIsDown = true;
        } else {
            liftPedal(message, output);
        }
        break;
    case kAllSoundOff:
        releaseKeys();
        output.stopSound(message.frame);
        break;
    case kResetAllControllers:
        resetControllers(message, output);
        break;
    case kAllNotesOff:
    case kMonoModeOn:
        takeAllNotesOff(message, output);
        break;
    default:
        output.play(message);
        break;
    }
}

// `part`: volume_ or expression_.
void Controllers::changeGain(std::int32_t Controllers::*part, std::int32_t value,
                             const MidiMessage& message, ControllerOutput& output) {
    const float before = gain();
    this->*part = value;
    if (gain() != before) {
        output.setGain(gain(), message.frame);
    }
}

void Controllers::takeAllNotesOff(const MidiMessage& message, ControllerOutput& output) {
    Channel& channel = channels_[message.channel()];
    if (channel.pedalIsDown) {
        channel.held |= channel.down;
    } else {
        endNotes(channel.down, message, output);
    }
    channel.down.reset();
}

void Controllers::resetControllers(const MidiMessage& message, ControllerOutput& output) {
    liftPedal(message, output);
    changeGain(&Controllers::expression_, kFullScale, message, output);
    output.play({.frame = message.frame,
                 .status = static_cast<std::uint8_t>(kBendStatus | message.channel()),
                 .data1 = 0,
                 .data2 = kBendCentre >> 7});
}

void Controllers::liftPedal(const MidiMessage& message, ControllerOutput& output) {
    Channel& channel = channels_[message.channel()];
    channel.pedalIsDown = false;
    endNotes(channel.held, message, output);
    channel.held.reset();
}

void Controllers::releaseKeys() {
    for (Channel& channel : channels_) {
        channel.down.reset();
        channel.held.reset();
    }
}

} // namespace zelvatone
