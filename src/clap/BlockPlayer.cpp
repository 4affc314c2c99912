#include "clap/BlockPlayer.h"

namespace zelvatone {

namespace {

// The events of CLAP begin with their header, and its type says what follows.
template<class Event>
const Event& as(const clap::EventHeader& header) {
    return reinterpret_cast<const Event&>(header);
}

std::int32_t frameOf(const clap::EventHeader& event) {
    return static_cast<std::int32_t>(event.time);
}

} // namespace

bool pushValue(const clap::OutputEvents& out, std::uint32_t time, std::uint32_t id, double value) {
    const clap::ParamValueEvent event{.header = {.size = sizeof event,
                                                 .time = time,
                                                 .space = clap::kCoreEventSpace,
                                                 .type = clap::kParamValue,
                                                 .flags = 0},
                                      .param = id,
                                      .cookie = nullptr,
                                      .noteId = -1,
                                      .port = -1,
                                      .channel = -1,
                                      .key = -1,
                                      .value = value};
    return out.tryPush(&out, &event.header);
}

double valueOfId(const Instrument& instrument, std::uint32_t id) {
    if (id == kBypassId) {
        return instrument.isBypassed() ? 1.0 : 0.0;
    }
    return static_cast<double>(instrument.value(static_cast<ParameterIndex>(id)));
}

void BlockPlayer::play(const clap::Process& process) {
    float* const* channels = process.audioOutputs[0].data32;
    instrument_.beginBlock(channels[0], channels[1], static_cast<std::int32_t>(process.frameCount));
    if (process.transport != nullptr) {
        followTempo(*process.transport, 0);
    }
    const std::uint32_t count = process.inEvents->size(process.inEvents);
    for (std::uint32_t i = 0; i < count; ++i) {
        const clap::EventHeader* event = process.inEvents->get(process.inEvents, i);
        if (event != nullptr && event->space == clap::kCoreEventSpace) {
            playEvent(*event, process.outEvents);
        }
    }
    instrument_.endBlock();
    process.audioOutputs[0].constantMask = 0;
}

void BlockPlayer::playEvent(const clap::EventHeader& event, const clap::OutputEvents* out) {
    const auto playNote = [this](const MidiMessage& message) { instrument_.midiAt(message); };
    switch (event.type) {
    case clap::kNoteOn:
        notes_.noteOn(as<clap::NoteEvent>(event), playNote);
        break;
    case clap::kNoteOff:
    case clap::kNoteChoke: // the engine ends single notes by their release alone
        notes_.noteOff(as<clap::NoteEvent>(event), playNote);
        break;
    case clap::kParamValue: {
        const auto& value = as<clap::ParamValueEvent>(event);
        if (value.param == kBypassId) {
            instrument_.bypassAt(frameOf(event), value.value >= 0.5);
        } else if (value.param < kShownParameters) {
            instrument_.valueAt(frameOf(event), static_cast<ParameterIndex>(value.param),
                                value.value);
        }
        break;
    }
    case clap::kTransport:
        followTempo(as<clap::TransportEvent>(event), event.time);
        break;
    case clap::kMidi:
        playMidi(as<clap::MidiEvent>(event), out);
        break;
    default:
        break;
    }
}

void BlockPlayer::playMidi(const clap::MidiEvent& event, const clap::OutputEvents* out) {
    const std::uint32_t changes = instrument_.programChanges();
    instrument_.midiAt(
        midiMessage(frameOf(event.header), event.data[0], event.data[1], event.data[2]));
    if (instrument_.programChanges() != changes) {
        tellValues(event.header.time, out);
    }
}

void BlockPlayer::followTempo(const clap::TransportEvent& transport, std::uint32_t time) {
    if ((transport.flags & clap::kTransportHasTempo) != 0) {
        instrument_.tempoAt(static_cast<std::int32_t>(time), transport.tempo);
    }
}

void BlockPlayer::tellValues(std::uint32_t time, const clap::OutputEvents* out) {
    if (out == nullptr) {
        return;
    }
    for (std::uint32_t id = 0; id < kShownParameters; ++id) {
        pushValue(*out, time, id, valueOfId(instrument_, id));
    }
}

void BlockPlayer::takeValues(const clap::InputEvents& events) {
    const std::uint32_t count = events.size(&events);
    for (std::uint32_t i = 0; i < count; ++i) {
        const clap::EventHeader* event = events.get(&events, i);
        if (event == nullptr || event->space != clap::kCoreEventSpace ||
            event->type != clap::kParamValue) {
            continue;
        }
        const auto& value = as<clap::ParamValueEvent>(*event);
        if (value.param == kBypassId) {
            instrument_.setBypassed(value.value >= 0.5);
        } else if (value.param < kShownParameters) {
            instrument_.setValue(static_cast<ParameterIndex>(value.param), value.value);
        }
    }
}

void BlockPlayer::reset() {
    instrument_.reset();
    notes_.reset();
}

} // namespace zelvatone
