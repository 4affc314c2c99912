#include "tests/lv2/HostedLv2.h"

#include "tests/lv2/Urids.h"

#include <lv2/midi/midi.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>

#include <stdexcept>

namespace zelvatone::test {
namespace {

const LV2_Feature* const* hostFeatures() {
    static const LV2_Feature map{LV2_URID__map, Urids::get().mapper()};
    static const std::array<const LV2_Feature*, 2> features{&map, nullptr};
    return features.data();
}

} // namespace

HostedLv2::HostedLv2(double sampleRate)
    : instance_(lilv_plugin_instantiate(Lv2Bundle::get().plugin(), sampleRate, hostFeatures())) {
    if (instance_ == nullptr) {
        throw std::runtime_error("the plug-in makes no instance");
    }
    lv2_atom_forge_init(&forge_, Urids::get().mapper());
    std::array<float, lv2::kPortCount> defaults{};
    lilv_plugin_get_port_ranges_float(Lv2Bundle::get().plugin(), nullptr, nullptr, defaults.data());
    values_ = defaults;
    for (std::uint32_t i = lv2::kEnabledPort; i < lv2::kPortCount; ++i) {
        lilv_instance_connect_port(instance(), i, &values_[i]);
    }
    lilv_instance_connect_port(instance(), lv2::kEventPort, events_.data());
    lilv_instance_activate(instance());
}

HostedLv2::~HostedLv2() {
    lilv_instance_deactivate(instance());
}

PortValues HostedLv2::portValues() const {
    PortValues values;
    std::uint32_t port = lv2::kEnabledPort;
    for (const std::string& symbol : Lv2Bundle::get().controlSymbols()) {
        values[symbol] = values_.at(port++);
    }
    return values;
}

void HostedLv2::restore(const LilvState* state) {
    for (const auto& [symbol, value] : Lv2Bundle::valuesOf(state)) {
        const LilvPort* port = Lv2Bundle::get().port(symbol);
        values_.at(lilv_port_get_index(Lv2Bundle::get().plugin(), port)) = value;
    }
    lilv_state_restore(state, instance(), nullptr, nullptr, 0, hostFeatures());
}

std::string HostedLv2::savedText() {
    PortValues values = portValues();
    const auto value = [](const char* symbol, void* all, std::uint32_t* size,
                          std::uint32_t* type) -> const void* {
        *size = sizeof(float);
        *type = Urids::get().map(LV2_ATOM__Float);
        return &static_cast<PortValues*>(all)->at(symbol);
    };
    const LilvOwner<LilvState> state(lilv_state_new_from_instance(
        Lv2Bundle::get().plugin(), instance(), Urids::get().mapper(), nullptr, nullptr, nullptr,
        nullptr, value, &values, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, hostFeatures()));
    const std::unique_ptr<char, void (*)(void*)> text(
        lilv_state_to_string(Lv2Bundle::get().world(), Urids::get().mapper(),
                             Urids::get().unmapper(), state.get(), "urn:saved", nullptr),
        lilv_free);
    return text.get();
}

StereoBlock HostedLv2::render(std::int32_t frames, const std::vector<Lv2Event>& events) {
    writeSequence(events);
    StereoBlock block{std::vector<float>(frames), std::vector<float>(frames)};
    lilv_instance_connect_port(instance(), lv2::kLeftPort, block.left.data());
    lilv_instance_connect_port(instance(), lv2::kRightPort, block.right.data());
    lilv_instance_run(instance(), static_cast<std::uint32_t>(frames));
    return block;
}

void HostedLv2::writeSequence(const std::vector<Lv2Event>& events) {
    lv2_atom_forge_set_buffer(&forge_, reinterpret_cast<std::uint8_t*>(events_.data()),
                              sizeof(events_));
    LV2_Atom_Forge_Frame sequence;
    lv2_atom_forge_sequence_head(&forge_, &sequence, 0);
    for (const Lv2Event& event : events) {
        lv2_atom_forge_frame_time(&forge_, event.frame);
        if (event.tempo != 0) {
            writeTempo(event.tempo);
        } else {
            lv2_atom_forge_atom(&forge_, kMidiBytes, Urids::get().map(LV2_MIDI__MidiEvent));
            lv2_atom_forge_write(&forge_, event.midi.data(), kMidiBytes);
        }
    }
    lv2_atom_forge_pop(&forge_, &sequence);
}

void HostedLv2::writeTempo(double tempo) {
    LV2_Atom_Forge_Frame position;
    lv2_atom_forge_object(&forge_, &position, 0, Urids::get().map(LV2_TIME__Position));
    lv2_atom_forge_key(&forge_, Urids::get().map(LV2_TIME__speed));
    lv2_atom_forge_float(&forge_, 1);
    lv2_atom_forge_key(&forge_, Urids::get().map(LV2_TIME__beatsPerMinute));
    lv2_atom_forge_float(&forge_, static_cast<float>(tempo));
    lv2_atom_forge_pop(&forge_, &position);
}

} // namespace zelvatone::test
