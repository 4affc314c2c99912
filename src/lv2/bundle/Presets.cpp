#include "formats/Instrument.h"
#include "formats/ParameterUnits.h"
#include "lv2/Identity.h"
#include "lv2/bundle/Description.h"
#include "lv2/bundle/Turtle.h"

#include <cstddef>

namespace zelvatone::lv2 {

namespace {

constexpr const char* kPrefixes = R"(@prefix lv2: <http://lv2plug.in/ns/lv2core#> .
@prefix pset: <http://lv2plug.in/ns/ext/presets#> .
@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .
)";

std::string presetText(std::size_t index) {
    const SynthProgram& program = factoryBank()[index];
    std::string text = "\n" + turtleUri(kPresetUri + std::to_string(index)) +
                       "\n    a pset:Preset ;\n    lv2:appliesTo " + turtleUri(kPluginUri) +
                       " ;\n    rdfs:label " + quoted(program.name.text()) + " ;\n    lv2:port";
    for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
        text += (parameter.index == 0 ? " [\n" : " , [\n");
        text += "        lv2:symbol " + quoted(parameter.symbol) + " ;\n        pset:value " +
                decimal(program.parameters[parameter.index]->value) + "\n    ]";
    }
    return text + " .\n";
}

} // namespace

std::string presetsText() {
    std::string text = kPrefixes;
    for (std::size_t i = 0; i < factoryBank().size(); ++i) {
        text += presetText(i);
    }
    return text;
}

} // namespace zelvatone::lv2
