#include "cli/commands/InfoCommand.h"

#include "cli/commands/PluginInfo.h"
#include "host/text/Format.h"
#include "host/text/Json.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

namespace {

// Labels are as wide as the longest, "Double precision", and two spaces.
std::string line(std::string_view label, std::string_view value) {
    return formatText("{:<18}{}\n", label, value);
}

std::string line(std::string_view label, int value) {
    return formatText("{:<18}{}\n", label, value);
}

// By a name of its own, for a text would turn into a truth value rather than a string_view.
std::string yesNoLine(std::string_view label, bool value) {
    return line(label, value ? "yes" : "no");
}

std::string_view nameOfSupport(int support) {
    if (support == 0) {
        return "does not say";
    }
    return support > 0 ? "yes" : "no";
}

std::string idLine(const PluginInfo& info) {
    return info.uniqueIdText.empty()
               ? line("Unique id", info.uniqueId)
               : line("Unique id", formatText("{} '{}'", info.uniqueId, info.uniqueIdText));
}

std::string pinLines(const PluginInfo& info) {
    std::string text;
    for (const PinInfo& pin : info.outputPins) {
        text += line("  output", pin.label + (pin.isStereo ? " (stereo)" : ""));
    }
    return text;
}

std::string asTable(const PluginInfo& info) {
    std::string text =
        line("File", info.path) + line("Name", info.name) + line("Vendor", info.vendor) +
        line("Product", info.product) + line("Vendor version", info.vendorVersion) + idLine(info) +
        line("Version", info.version) + line("VST version", info.vstVersion) +
        line("Category", info.category) + yesNoLine("Instrument", info.isInstrument) +
        yesNoLine("Editor", info.hasEditor) + yesNoLine("State chunks", info.storesChunks) +
        yesNoLine("Double precision", info.rendersDoubles) + line("Programs", info.programs) +
        line("Parameters", info.parameters) + line("Inputs", info.inputs) +
        line("Outputs", info.outputs) + pinLines(info) + line("Latency", info.latencySamples) +
        line("Tail", info.tailSamples) + line("MIDI inputs", info.midiInputChannels) +
        line("MIDI outputs", info.midiOutputChannels) + "Can do\n";
    for (const auto& [capability, support] : info.capabilities) {
        text += formatText("  {:<22}{}\n", capability, nameOfSupport(support));
    }
    return text;
}

Json asJson(const PluginInfo& info) {
    Json pins = Json::array();
    for (const PinInfo& pin : info.outputPins) {
        pins.push_back({{"label", pin.label}, {"stereo", pin.isStereo}});
    }
    Json canDo = Json::object();
    for (const auto& [capability, support] : info.capabilities) {
        canDo[capability] = support;
    }
    return {{"path", info.path},
            {"name", info.name},
            {"vendor", info.vendor},
            {"product", info.product},
            {"vendorVersion", info.vendorVersion},
            {"uniqueId", info.uniqueId},
            {"uniqueIdText", info.uniqueIdText},
            {"version", info.version},
            {"vstVersion", info.vstVersion},
            {"category", info.category},
            {"instrument", info.isInstrument},
            {"editor", info.hasEditor},
            {"chunks", info.storesChunks},
            {"doublePrecision", info.rendersDoubles},
            {"programs", info.programs},
            {"parameters", info.parameters},
            {"inputs", info.inputs},
            {"outputs", info.outputs},
            {"outputPins", pins},
            {"latencySamples", info.latencySamples},
            {"tailSamples", info.tailSamples},
            {"midiInputChannels", info.midiInputChannels},
            {"midiOutputChannels", info.midiOutputChannels},
            {"canDo", canDo}};
}

} // namespace

CLI::App* addInfoCommand(CLI::App& app, InfoOptions& options) {
    CLI::App* command = app.add_subcommand("info", "Show what the plug-in says about itself");
    addPluginOptions(*command, options.plugin);
    command->add_flag("--json", options.json, "Write JSON, for programs to read");
    command->footer("Examples:\n"
                    "  zelvatone info\n"
                    "  zelvatone info --plugin /usr/lib/vst/other.so --json");
    return command;
}

void runInfo(const InfoOptions& options, const StandardOutput& output) {
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    const PluginInfo info = pluginInfo(plugin);
    output.print(options.json ? jsonText(asJson(info)) : asTable(info));
}

} // namespace zelvatone
