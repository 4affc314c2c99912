#include "cli/commands/PresetCommand.h"

#include "cli/commands/PresetReport.h"
#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/plugin/PluginText.h"
#include "host/plugin/Programs.h"
#include "host/preset/PresetTransfer.h"
#include "host/preset/PresetWriter.h"
#include "host/text/Format.h"
#include "host/text/Names.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

namespace {

// Whether a file of that name holds a bank. Throws UsageError for a name that says neither.
bool isBankPath(const std::string& path) {
    const std::string extension = lowerCase(userPath(path).extension().string());
    if (extension != ".fxp" && extension != ".fxb") {
        throw UsageError(formatText("cannot tell what to save in '{}': end its name in .fxp for a "
                                    "program or .fxb for the bank",
                                    path));
    }
    return extension == ".fxb";
}

void checkName(const std::optional<std::string>& name) {
    if (name && (name->empty() || name->size() > kVstMaxProgNameLen)) {
        throw UsageError(formatText("--name takes 1 to 24 bytes, not '{}'", *name));
    }
}

void rename(HostedPlugin& plugin, const std::string& name) {
    PluginTextBuffer buffer{}; // the interface takes no const
    name.copy(buffer.data(), buffer.size() - 1);
    plugin.request(effSetProgramName, 0, 0, buffer.data());
}

} // namespace

void checkPresetPath(const std::string& path) {
    isBankPath(path);
}

void savePreset(const std::string& path, HostedPlugin& plugin, const StandardOutput& output) {
    const Preset preset = isBankPath(path) ? takeBank(plugin) : takeProgram(plugin);
    writePreset(userPath(path), preset);
    output.print(formatText("{}: {}\n", cleanText(path), presetSummary(preset)));
}

namespace {

void save(const PresetOptions& options, const StandardOutput& output) {
    checkPresetPath(options.file);
    checkName(options.name);
    const PluginSetup setup = readSetup(options.setup);
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    applySetup(plugin, setup);
    if (options.name) {
        rename(plugin, *options.name);
    }
    savePreset(options.file, plugin, output);
}

void load(const PresetOptions& options, const StandardOutput& output) {
    SetupOptions wanted = options.setup;
    wanted.preset = options.file;
    const PluginSetup setup = readSetup(wanted);
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    applySetup(plugin, setup);
    const PresetReport report(*setup.preset, setup.program.has_value(), plugin);
    output.print(options.json ? report.json() : report.text());
}

void addSave(CLI::App& preset, PresetOptions& options) {
    CLI::App* command = preset.add_subcommand("save", "Save a program or the bank to a file");
    command->add_option("file", options.file, "The file: .fxp for a program, .fxb for the bank")
        ->required()
        ->type_name("FILE");
    command->add_option("--name", options.name, "Name the program, in 24 bytes at most")
        ->type_name("NAME");
    addSetupOptions(*command, options.setup);
    addPluginOptions(*command, options.plugin);
    command->footer("Examples:\n"
                    "  zelvatone preset save organ.fxp --program Organ\n"
                    "  zelvatone preset save slow.fxp --program Organ --set Attack=1 --name Slow\n"
                    "  zelvatone preset save all.fxb");
}

void addLoad(CLI::App& preset, PresetOptions& options) {
    CLI::App* command =
        preset.add_subcommand("load", "Load a file into the plug-in and show its values");
    command->add_option("file", options.file, "The file: .fxp or .fxb, with parameters")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("--program", options.setup.program,
                     "Show this program of a bank instead of the list")
        ->type_name("NAME");
    command->add_flag("--json", options.json, "Write JSON, for programs to read");
    addPluginOptions(*command, options.plugin);
    command->footer("Examples:\n"
                    "  zelvatone preset load organ.fxp\n"
                    "  zelvatone preset load all.fxb --program Organ --json");
    command->callback([&options] { options.loads = true; });
}

} // namespace

CLI::App* addPresetCommand(CLI::App& app, PresetOptions& options) {
    CLI::App* command =
        app.add_subcommand("preset", "Keep programs in .fxp files and banks in .fxb files");
    addSave(*command, options);
    addLoad(*command, options);
    command->require_subcommand(1);
    command->footer("Examples:\n"
                    "  zelvatone preset save organ.fxp --program Organ\n"
                    "  zelvatone preset load organ.fxp\n"
                    "  zelvatone render song.mid -o song.wav --preset organ.fxp --gain -2");
    return command;
}

void runPreset(const PresetOptions& options, const StandardOutput& output) {
    if (options.loads) {
        load(options, output);
    } else {
        save(options, output);
    }
}

} // namespace zelvatone
