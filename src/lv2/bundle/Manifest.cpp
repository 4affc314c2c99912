#include "formats/Instrument.h"
#include "lv2/Identity.h"
#include "lv2/bundle/Description.h"
#include "lv2/bundle/Turtle.h"

#include <cstddef>

namespace zelvatone::lv2 {

namespace {

constexpr const char* kPrefixes = R"(@prefix lv2: <http://lv2plug.in/ns/lv2core#> .
@prefix pset: <http://lv2plug.in/ns/ext/presets#> .
@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .
@prefix ui: <http://lv2plug.in/ns/extensions/ui#> .
)";

} // namespace

std::string manifestText() {
    std::string text = kPrefixes;
    const std::string plugin = turtleUri(kPluginUri);
    text += "\n" + plugin + R"(
    a lv2:Plugin ;
    lv2:binary <zelvatone.so> ;
    rdfs:seeAlso <zelvatone.ttl> .
)";
    text += "\n" + turtleUri(kEditorUri) + R"(
    a ui:X11UI ;
    lv2:binary <zelvatone_editor.so> ;
    rdfs:seeAlso <zelvatone.ttl> .
)";
    for (std::size_t i = 0; i < factoryBank().size(); ++i) {
        text += "\n" + turtleUri(kPresetUri + std::to_string(i)) +
                "\n    a pset:Preset ;\n    lv2:appliesTo " + plugin +
                " ;\n    rdfs:seeAlso <presets.ttl> .\n";
    }
    return text;
}

} // namespace zelvatone::lv2
