#include "formats/ParameterUnits.h"
#include "lv2/Identity.h"
#include "lv2/bundle/Description.h"
#include "lv2/bundle/Turtle.h"

#include <string>
#include <string_view>
#include <utility>

namespace zelvatone::lv2 {

namespace {

constexpr const char* kPrefixes = R"(@prefix atom: <http://lv2plug.in/ns/ext/atom#> .
@prefix doap: <http://usefulinc.com/ns/doap#> .
@prefix foaf: <http://xmlns.com/foaf/0.1/> .
@prefix lv2: <http://lv2plug.in/ns/lv2core#> .
@prefix midi: <http://lv2plug.in/ns/ext/midi#> .
@prefix opts: <http://lv2plug.in/ns/ext/options#> .
@prefix pg: <http://lv2plug.in/ns/ext/port-groups#> .
@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .
@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .
@prefix state: <http://lv2plug.in/ns/ext/state#> .
@prefix time: <http://lv2plug.in/ns/ext/time#> .
@prefix ui: <http://lv2plug.in/ns/extensions/ui#> .
@prefix units: <http://lv2plug.in/ns/extensions/units#> .
@prefix urid: <http://lv2plug.in/ns/ext/urid#> .
)";

constexpr const char* kPlugin = R"(
    a lv2:InstrumentPlugin ,
        lv2:Plugin ,
        doap:Project ;
    doap:name "Zelvatone" ;
    doap:shortdesc "Synthesizer of up to 100 modes a note" ;
    doap:license <http://opensource.org/licenses/MIT> ;
    doap:maintainer [
        a foaf:Organization ;
        foaf:name "Quillfeather" ;
        foaf:homepage <https://quillfeather.example/zelvatone>
    ] ;
    rdfs:comment "Each note is a bank of modes, whose number, spacing and loudness shift in time with the song." ;
    lv2:minorVersion @MINOR@ ;
    lv2:microVersion @MICRO@ ;
    lv2:requiredFeature urid:map ;
    lv2:optionalFeature lv2:hardRTCapable ;
    lv2:extensionData state:interface ;
    ui:ui <@EDITOR@> ;
    pg:mainOutput <@PLUGIN@#output> ;
    lv2:port [
        a lv2:InputPort ,
            atom:AtomPort ;
        lv2:index 0 ;
        lv2:symbol "events" ;
        lv2:name "Events" ;
        rdfs:comment "MIDI, and the tempo of the song" ;
        atom:bufferType atom:Sequence ;
        atom:supports midi:MidiEvent ,
            time:Position ;
        lv2:designation lv2:control
    ] , [
        a lv2:OutputPort ,
            lv2:AudioPort ;
        lv2:index 1 ;
        lv2:symbol "left" ;
        lv2:name "Left" ;
        lv2:designation pg:left ;
        pg:group <@PLUGIN@#output>
    ] , [
        a lv2:OutputPort ,
            lv2:AudioPort ;
        lv2:index 2 ;
        lv2:symbol "right" ;
        lv2:name "Right" ;
        lv2:designation pg:right ;
        pg:group <@PLUGIN@#output>
    ] , [
        a lv2:InputPort ,
            lv2:ControlPort ;
        lv2:index 3 ;
        lv2:symbol "enabled" ;
        lv2:name "Enabled" ;
        lv2:default 1 ;
        lv2:minimum 0 ;
        lv2:maximum 1 ;
        lv2:portProperty lv2:integer ,
            lv2:toggled ;
        lv2:designation lv2:enabled
    ])";

constexpr const char* kOutputGroup = R"(
    a pg:OutputGroup ,
        pg:StereoGroup ;
    lv2:symbol "output" ;
    lv2:name "Output" .
)";

constexpr const char* kEditor = R"(
    a ui:X11UI ;
    lv2:requiredFeature ui:idleInterface ,
        ui:parent ;
    lv2:optionalFeature opts:options ,
        ui:fixedSize ,
        ui:noUserResize ,
        ui:resize ,
        ui:touch ,
        urid:map ;
    lv2:extensionData ui:idleInterface ;
    opts:supportedOption ui:scaleFactor ;
    ui:portNotification)";

// Replaces every mark, `@PLUGIN@` and the like, by what it stands for. The build computes the
// version from the project's.
std::string withNames(std::string text) {
    for (const auto& [mark, name] :
         {std::pair("@PLUGIN@", kPluginUri), std::pair("@EDITOR@", kEditorUri),
          std::pair("@MINOR@", ZELVATONE_LV2_MINOR), std::pair("@MICRO@", ZELVATONE_LV2_MICRO)}) {
        for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
            text.replace(at, std::string_view(mark).size(), name);
        }
    }
    return text;
}

std::string property(std::string_view name, std::string_view value) {
    return " ;\n        " + std::string(name) + " " + std::string(value);
}

// A unit that the standard list does not have.
std::string ownUnit(std::string_view name, std::string_view symbol) {
    return "[\n            a units:Unit ;\n            rdfs:label " + quoted(name) +
           " ;\n            units:symbol " + quoted(symbol) + " ;\n            units:render " +
           quoted("%d " + std::string(symbol)) + "\n        ]";
}

// The unit, once: choices carry it in their texts, and the names do not have it.
std::string unitOf(std::string_view label) {
    if (label == "Hz") {
        return property("units:unit", "units:hz");
    }
    if (label == "s") {
        return property("units:unit", "units:s");
    }
    if (label == "%") { // the value is a part of 1
        return property("units:unit", "units:coef");
    }
    if (label == "osc") {
        return property("units:unit", ownUnit("oscillators", label));
    }
    return label.empty() ? "" : property("units:unit", ownUnit(label, label));
}

// Every value with the text that the instrument itself shows for it.
std::string choicesOf(const ParameterUnits& parameter) {
    std::string text = property("lv2:scalePoint", "");
    for (const ParameterChoice& choice : parameter.choices) {
        text += (&choice == &parameter.choices.front() ? "[\n" : " , [\n");
        text += "            rdfs:label " + quoted(choice.text) + " ;\n            rdf:value " +
                decimal(choice.value) + "\n        ]";
    }
    return text;
}

std::string kindOf(const ParameterUnits& parameter) {
    if (!parameter.choices.empty()) {
        return property("lv2:portProperty", "lv2:integer ,\n            lv2:enumeration") +
               choicesOf(parameter);
    }
    return (parameter.isWhole ? property("lv2:portProperty", "lv2:integer") : "") +
           unitOf(parameter.unit);
}

std::string portText(const ParameterUnits& parameter) {
    return " , [\n        a lv2:InputPort ,\n            lv2:ControlPort" +
           property("lv2:index", std::to_string(portOf(parameter.index))) +
           property("lv2:symbol", quoted(parameter.symbol)) +
           property("lv2:name", quoted(parameter.name)) +
           property("lv2:default", decimal(parameter.defaultValue)) +
           property("lv2:minimum", decimal(parameter.min)) +
           property("lv2:maximum", decimal(parameter.max)) + kindOf(parameter) + "\n    ]";
}

// That the host shall tell the editor when this port's value changes.
std::string notificationText(const ParameterUnits& parameter) {
    return std::string(parameter.index == 0 ? " [" : " , [") + "\n        ui:plugin <@PLUGIN@>" +
           property("lv2:symbol", quoted(parameter.symbol)) +
           property("ui:protocol", "ui:floatProtocol") + "\n    ]";
}

} // namespace

std::string pluginText() {
    std::string plugin = std::string("\n<@PLUGIN@>") + kPlugin;
    std::string editor = std::string("\n<@EDITOR@>") + kEditor;
    for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
        plugin += portText(parameter);
        editor += notificationText(parameter);
    }
    return kPrefixes +
           withNames(plugin + " .\n\n<@PLUGIN@#output>" + kOutputGroup + "\n" + editor.substr(1)) +
           " .\n";
}

} // namespace zelvatone::lv2
