#include "lv2/sound/InstrumentPlugin.h"

#include <lv2/atom/util.h>

#include <optional>
#include <string>

namespace zelvatone::lv2 {

namespace {

// What an atom has after its head.
template<class Value>
Value bodyOf(const LV2_Atom& atom) {
    return *static_cast<const Value*>(LV2_ATOM_BODY_CONST(&atom));
}

} // namespace

// A host of LV2 sets the ports itself: a program change may not.
InstrumentPlugin::InstrumentPlugin(double sampleRate, const LV2_URID_Map& map)
    : uris_(map), instrument_(Instrument::ProgramChange::kIgnored) {
    instrument_.setSampleRate(sampleRate);
}

void InstrumentPlugin::connect(std::uint32_t port, void* data) {
    switch (port) {
    case kEventPort:
        events_ = static_cast<const LV2_Atom_Sequence*>(data);
        break;
    case kLeftPort:
        left_ = static_cast<float*>(data);
        break;
    case kRightPort:
        right_ = static_cast<float*>(data);
        break;
    case kEnabledPort:
        enabled_ = static_cast<const float*>(data);
        break;
    default:
        if (port < kPortCount) {
            parameters_.at(port - kFirstParameterPort).connect(static_cast<const float*>(data));
        }
    }
}

void InstrumentPlugin::run(std::uint32_t frames) {
    instrument_.beginBlock(left_, right_, static_cast<std::int32_t>(frames));
    readControls();
    readEvents();
    instrument_.endBlock();
}

void InstrumentPlugin::readControls() {
    if (enabled_ != nullptr) {
        instrument_.bypassAt(0, !(*enabled_ > 0.0F));
    }
    for (std::int32_t i = 0; i < kShownParameters; ++i) {
        if (const std::optional<float> value = parameters_[i].change()) {
            instrument_.valueAt(0, static_cast<ParameterIndex>(i), static_cast<double>(*value));
        }
    }
}

void InstrumentPlugin::readEvents() {
    if (events_ == nullptr) {
        return;
    }
    const LV2_Atom_Sequence_Body& body = events_->body;
    const LV2_Atom_Event* event = lv2_atom_sequence_begin(&body);
    while (!lv2_atom_sequence_is_end(&body, events_->atom.size, event)) {
        readEvent(*event);
        event = lv2_atom_sequence_next(event);
    }
}

void InstrumentPlugin::readEvent(const LV2_Atom_Event& event) {
    const auto frame = static_cast<std::int32_t>(event.time.frames);
    const LV2_Atom& atom = event.body;
    if (atom.type == uris_.midiEvent && (atom.size == 2 || atom.size == 3)) {
        const auto* bytes = static_cast<const std::uint8_t*>(LV2_ATOM_BODY_CONST(&atom));
        const std::uint8_t last = atom.size == 3 ? bytes[2] : std::uint8_t{0};
        instrument_.midiAt(midiMessage(frame, bytes[0], bytes[1], last));
    } else if (atom.type == uris_.object || atom.type == uris_.blank) {
        const auto& object = reinterpret_cast<const LV2_Atom_Object&>(atom);
        if (object.body.otype == uris_.position) {
            readPosition(frame, object);
        }
    }
}

// Hosts send a position when it changes, and only what changed.
void InstrumentPlugin::readPosition(std::int32_t frame, const LV2_Atom_Object& position) {
    const LV2_Atom* tempo = nullptr;
    std::array<LV2_Atom_Object_Query, 2> query{{{uris_.beatsPerMinute, &tempo}, {0, nullptr}}};
    lv2_atom_object_query(&position, query.data());
    if (tempo == nullptr) {
        return;
    }
    if (tempo->type == uris_.floatNumber) {
        instrument_.tempoAt(frame, static_cast<double>(bodyOf<float>(*tempo)));
    } else if (tempo->type == uris_.doubleNumber) {
        instrument_.tempoAt(frame, bodyOf<double>(*tempo));
    }
}

LV2_State_Status InstrumentPlugin::save(LV2_State_Store_Function store,
                                        LV2_State_Handle handle) const {
    const std::string text = textOfState(instrument_.state());
    // With the zero that ends it, as strings have it.
    return store(handle, uris_.state, text.c_str(), text.size() + 1, uris_.string,
                 LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
}

LV2_State_Status InstrumentPlugin::restore(LV2_State_Retrieve_Function retrieve,
                                           LV2_State_Handle handle) {
    std::size_t size = 0;
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    const void* data = retrieve(handle, uris_.state, &size, &type, &flags);
    if (data == nullptr) {
        return LV2_STATE_ERR_NO_PROPERTY;
    }
    if (type != uris_.string || size == 0) {
        return LV2_STATE_ERR_BAD_TYPE;
    }
    const std::optional<InstrumentState> state =
        stateOfText({static_cast<const char*>(data), size - 1});
    if (!state) {
        return LV2_STATE_ERR_UNKNOWN;
    }
    instrument_.setState(*state);
    for (std::int32_t i = 0; i < kShownParameters; ++i) {
        parameters_[i].expect(state->values[i]);
    }
    return LV2_STATE_SUCCESS;
}

} // namespace zelvatone::lv2
