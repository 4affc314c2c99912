#include "tests/lv2/Lv2Bundle.h"

#include "lv2/Identity.h"
#include "tests/lv2/Urids.h"

#include <lv2/atom/atom.h>

#include <stdexcept>

namespace zelvatone::test {

Lv2Bundle& Lv2Bundle::get() {
    static Lv2Bundle bundle;
    return bundle;
}

std::string Lv2Bundle::folder() {
    return ZELVATONE_LV2_BUNDLE "/";
}

Lv2Bundle::Lv2Bundle() : world_(lilv_world_new()) {
    const LilvOwner<LilvNode> place(lilv_new_file_uri(world(), nullptr, folder().c_str()));
    lilv_world_load_bundle(world(), place.get());
    plugin_ =
        lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world()), uri(lv2::kPluginUri).get());
    if (plugin_ == nullptr) {
        throw std::runtime_error("no plug-in in " + folder());
    }
    lilv_plugin_get_num_ports(plugin_); // states are written from what was read of the ports
}

LilvOwner<LilvNode> Lv2Bundle::uri(const std::string& text) const {
    return LilvOwner<LilvNode>(lilv_new_uri(world(), text.c_str()));
}

const LilvPort* Lv2Bundle::port(const std::string& symbol) const {
    const LilvOwner<LilvNode> name(lilv_new_string(world(), symbol.c_str()));
    return lilv_plugin_get_port_by_symbol(plugin_, name.get());
}

std::string Lv2Bundle::portText(const LilvPort* port, const char* property) const {
    const LilvOwner<LilvNode> value(lilv_port_get(plugin_, port, uri(property).get()));
    return value == nullptr ? "" : lilv_node_as_string(value.get());
}

bool Lv2Bundle::portIs(const LilvPort* port, const char* property) const {
    return lilv_port_has_property(plugin_, port, uri(property).get());
}

std::vector<std::string> Lv2Bundle::controlSymbols() const {
    std::vector<std::string> symbols;
    const auto control = uri(LV2_CORE__ControlPort);
    for (std::uint32_t i = 0; i < lilv_plugin_get_num_ports(plugin_); ++i) {
        const LilvPort* port = lilv_plugin_get_port_by_index(plugin_, i);
        if (lilv_port_is_a(plugin_, port, control.get())) {
            symbols.emplace_back(lilv_node_as_string(lilv_port_get_symbol(plugin_, port)));
        }
    }
    return symbols;
}

LilvOwner<LilvState> Lv2Bundle::preset(int index) const {
    std::string text(lv2::kPluginUri);
    text.append("#preset-").append(std::to_string(index));
    const auto name = uri(text);
    lilv_world_load_resource(world(), name.get());
    return LilvOwner<LilvState>(
        lilv_state_new_from_world(world(), Urids::get().mapper(), name.get()));
}

PortValues Lv2Bundle::valuesOf(const LilvState* state) {
    PortValues values;
    lilv_state_emit_port_values(
        state,
        [](const char* symbol, void* result, const void* value, std::uint32_t, std::uint32_t type) {
            if (type != Urids::get().map(LV2_ATOM__Float)) {
                throw std::runtime_error(std::string(symbol) + " is not a float");
            }
            static_cast<PortValues*>(result)->emplace(symbol, *static_cast<const float*>(value));
        },
        &values);
    return values;
}

} // namespace zelvatone::test
