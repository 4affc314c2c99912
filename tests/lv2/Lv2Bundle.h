// The built bundle, as a host's library finds it.
#pragma once

#include <lilv/lilv.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zelvatone::test {

struct LilvFree {
    void operator()(LilvWorld* world) const { lilv_world_free(world); }
    void operator()(LilvNode* node) const { lilv_node_free(node); }
    void operator()(LilvNodes* nodes) const { lilv_nodes_free(nodes); }
    void operator()(LilvState* state) const { lilv_state_free(state); }
    void operator()(LilvInstance* instance) const { lilv_instance_free(instance); }
};

template<class Object>
using LilvOwner = std::unique_ptr<Object, LilvFree>;

// By symbol.
using PortValues = std::map<std::string, float>;

class Lv2Bundle {
public:
    // Loads the bundle alone, at the first call. Throws if it has no plug-in.
    static Lv2Bundle& get();
    static std::string folder(); // with a slash at the end

    LilvWorld* world() const { return world_.get(); }
    const LilvPlugin* plugin() const { return plugin_; }
    LilvOwner<LilvNode> uri(const std::string& text) const;

    // The port's properties; "" or an empty list for what it does not have.
    const LilvPort* port(const std::string& symbol) const;
    std::string portText(const LilvPort* port, const char* property) const;
    bool portIs(const LilvPort* port, const char* property) const;
    // Symbols of all control inputs, in port order.
    std::vector<std::string> controlSymbols() const;

    // The preset of factory program `index`; its label and its values.
    LilvOwner<LilvState> preset(int index) const;
    static PortValues valuesOf(const LilvState* state);

private:
    Lv2Bundle();

    LilvOwner<LilvWorld> world_;
    const LilvPlugin* plugin_ = nullptr;
};

} // namespace zelvatone::test
