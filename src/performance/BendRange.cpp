#include "performance/BendRange.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

constexpr std::uint8_t kBendRangeParameter = 0; // in both halves
constexpr std::uint8_t kNoParameter = 127;

} // namespace

std::optional<MidiMessage> BendRange::take(const MidiMessage& message) {
    if (message.kind() == kControllerStatus) {
        return takeController(message);
    }
    if (message.kind() != kBendStatus) {
        return message;
    }
    channels_[message.channel()].wheel =
        ((message.data2 & 0x7F) << 7 | (message.data1 & 0x7F)) - kBendCentre;
    return bend(message);
}

// A step of the instrument's wheel is 0.15 cent at 12 semitones, so the pitch is right to half of
// it.
MidiMessage BendRange::bend(const MidiMessage& cause) const {
    const double wheel = channels_[cause.channel()].wheel;
    const long place = std::lround(wheel * cents(cause.channel()) / instrumentCents_);
    const auto bits = static_cast<std::uint32_t>(
        std::clamp(place, -long{kBendCentre}, long{kBendCentre} - 1) + kBendCentre);
    return {.frame = cause.frame,
            .status = static_cast<std::uint8_t>(kBendStatus | cause.channel()),
            .data1 = static_cast<std::uint8_t>(bits & 0x7FU),
            .data2 = static_cast<std::uint8_t>(bits >> 7U)};
}

std::optional<MidiMessage> BendRange::takeController(const MidiMessage& message) {
    Channel& channel = channels_[message.channel()];
    const bool setsRange =
        channel.parameter == kBendRangeParameter && channel.parameterFine == kBendRangeParameter;
    switch (message.data1) {
    case kParameter:
        channel.parameter = message.data2;
        return message;
    case kParameterFine:
        channel.parameterFine = message.data2;
        return message;
    case kOtherParameter:
    case kOtherParameterFine: // data entry sets that one from here on
        channel.parameter = kNoParameter;
        channel.parameterFine = kNoParameter;
        return message;
    case kResetAllControllers: // the range stays, as General MIDI has it
        channel.parameter = kNoParameter;
        channel.parameterFine = kNoParameter;
        channel.wheel = 0;
        return message;
    case kDataEntry:
    case kDataEntryFine:
        if (!setsRange) {
            return message;
        }
        (message.data1 == kDataEntry ? channel.semitones : channel.cents) = message.data2;
        return channel.wheel == 0 ? std::nullopt : std::optional(bend(message));
    default:
        return message;
    }
}

} // namespace zelvatone
