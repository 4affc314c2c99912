#include "cli/commands/EditCommand.h"

#include "cli/commands/PresetCommand.h"
#include "host/plugin/EditorSession.h"
#include "host/plugin/ParameterLookup.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"
#include "host/threads/Interrupt.h"

#include <CLI/CLI.hpp>

namespace zelvatone {

namespace {

// "Attack 0.25 (1.32 s)", with the plug-in's own text for the value.
std::string noticeText(const EditNotice& notice, HostedPlugin& plugin,
                       const std::vector<std::string>& names) {
    if (notice.parameter < 0 || notice.parameter >= plugin.parameterCount()) {
        return formatText("unknown parameter {}", notice.parameter);
    }
    const std::string& name = names[static_cast<std::size_t>(notice.parameter)];
    switch (notice.kind) {
    case EditNotice::Kind::kBegin:
        return name + ": begin";
    case EditNotice::Kind::kEnd:
        return name + ": end";
    default:
        return formatText("{} {} ({})", name, shortestText(notice.value),
                          plugin.text(effGetParamDisplay, notice.parameter));
    }
}

std::string noticeLines(const std::vector<EditNotice>& notices, HostedPlugin& plugin,
                        const std::vector<std::string>& names) {
    std::string lines;
    for (const EditNotice& notice : notices) {
        lines += noticeText(notice, plugin, names) + "\n";
    }
    return lines;
}

void editUntilClosed(HostedPlugin& plugin, bool verbose, const StandardOutput& output) {
    const auto names = parameterNames(plugin);
    const InterruptWatch watch;
    EditorSession session(plugin, WindowUse::kWork);
    while (session.turn()) {
        const auto notices = session.log().takeNotices();
        if (verbose && !notices.empty()) {
            output.print(noticeLines(notices, plugin, names));
        }
    }
}

} // namespace

CLI::App* addEditCommand(CLI::App& app, EditOptions& options) {
    CLI::App* command = app.add_subcommand("edit", "Open the plug-in's editor in a window");
    addPluginOptions(*command, options.plugin);
    addSetupOptions(*command, options.setup);
    command
        ->add_option("--save", options.save,
                     "When the window is closed, write the edited program (.fxp) or bank "
                     "(.fxb)")
        ->type_name("FILE");
    command->footer("The editor is silent: render a song with the saved file to hear it.\n"
                    "With --verbose, each move of a knob is printed as it happens.\n"
                    "Examples:\n"
                    "  zelvatone edit --program Organ\n"
                    "  zelvatone edit --program Organ --save mine.fxp");
    return command;
}

void runEdit(const EditOptions& options, const StandardOutput& output) {
    if (options.save) {
        checkPresetPath(*options.save);
    }
    const PluginSetup setup = readSetup(options.setup);
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    applySetup(plugin, setup);
    editUntilClosed(plugin, options.plugin.verbose, output);
    if (options.save) {
        savePreset(*options.save, plugin, output);
    }
}

} // namespace zelvatone
