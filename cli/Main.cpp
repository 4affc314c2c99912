// The command-line host: reads the command line, runs the command, says in one line what went
// wrong.

#include "cli/Main.h"

#include "cli/commands/EditCommand.h"
#include "cli/commands/InfoCommand.h"
#include "cli/commands/ParamsCommand.h"
#include "cli/commands/PresetCommand.h"
#include "cli/commands/ProgramsCommand.h"
#include "cli/commands/RenderCommand.h"
#include "cli/commands/ScreenshotCommand.h"
#include "cli/commands/TourCommand.h"
#include "cli/terminal/Notice.h"
#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/threads/Interrupt.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <iostream>

namespace zelvatone {

namespace {

// Every command with its options.
class Commands {
public:
    explicit Commands(CLI::App& app) {
        add(addRenderCommand(app, render_), render_.plugin, runRender, render_);
        add(addTourCommand(app, tour_), tour_.plugin, runTour, tour_);
        add(addEditCommand(app, edit_), edit_.plugin, runEdit, edit_);
        add(addScreenshotCommand(app, screenshot_), screenshot_.plugin, runScreenshot, screenshot_);
        add(addProgramsCommand(app, programs_), programs_.plugin, runPrograms, programs_);
        add(addPresetCommand(app, preset_), preset_.plugin, runPreset, preset_);
        add(addParamsCommand(app, params_), params_.plugin, runParams, params_);
        add(addInfoCommand(app, info_), info_.plugin, runInfo, info_);
    }

    // Runs the one that the command line named.
    void run() const {
        for (const Command& command : commands_) {
            if (command.app->parsed()) {
                const StandardOutput output(command.plugin->verbose);
                command.run(output);
            }
        }
    }

    // "a, b and c"
    std::string names() const {
        std::vector<std::string> names;
        for (const Command& command : commands_) {
            names.push_back(command.app->get_name());
        }
        return wordList(names, "and");
    }

private:
    struct Command {
        const CLI::App* app;
        const PluginOptions* plugin;
        std::function<void(const StandardOutput&)> run;
    };

    template<typename Options>
    void add(const CLI::App* app, const PluginOptions& plugin,
             void (*run)(const Options&, const StandardOutput&), const Options& options) {
        commands_.push_back({app, &plugin, [run, &options](const StandardOutput& output) {
                                 run(options, output);
                             }});
    }

    RenderOptions render_;
    TourOptions tour_;
    EditOptions edit_;
    ScreenshotOptions screenshot_;
    ProgramsOptions programs_;
    PresetOptions preset_;
    ParamsOptions params_;
    InfoOptions info_;
    std::vector<Command> commands_;
};

void describe(CLI::App& app) {
    // On Windows too a slash begins a path, not an option.
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", "zelvatone " ZELVATONE_VERSION);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.footer("Examples:\n"
               "  zelvatone render song.mid -o song.wav\n"
               "  zelvatone render song.mid -o song.wav --program Organ\n"
               "  zelvatone tour -o tour\n"
               "'zelvatone COMMAND --help' describes a command.\n"
               "Exit status: 0 success, 1 bad file or plug-in, 2 bad command line.");
}

UsageError commandError(const CLI::App& app, const Commands& commands) {
    const auto extras = app.remaining();
    const std::string wrong =
        extras.empty() ? "no command given" : formatText("unknown command '{}'", extras[0]);
    return UsageError(formatText("{}; the commands are {}", wrong, commands.names()));
}

// "preset save", for the command and the command inside it that the command line came to.
std::string parsedCommand(const CLI::App& app) {
    std::string names;
    for (auto inside = app.get_subcommands(); !inside.empty();
         inside = inside[0]->get_subcommands()) {
        names += inside[0]->get_name() + " ";
    }
    return names;
}

// False when the command line asked for help or the version, which has been printed then.
bool parse(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app.exit(help);
        std::cout.flush();
        if (!std::cout) {
            throw InputError("cannot write to standard output");
        }
        return false;
    } catch (const CLI::ParseError& error) {
        throw UsageError(
            formatText("{}; see 'zelvatone {}--help'", error.what(), parsedCommand(app)));
    }
    return true;
}

int runCommand(int argc, char** argv) {
    CLI::App app("Plays MIDI files through the zelvatone instrument, or another VST 2.4 plug-in.",
                 "zelvatone");
    describe(app);
    const Commands commands(app);
    // An unknown command is named by commandError(). Commands made earlier do not inherit this.
    app.allow_extras();
    if (!parse(app, argc, argv)) {
        return 0;
    }
    if (app.get_subcommands().empty()) {
        throw commandError(app, commands);
    }
    commands.run();
    return 0;
}

} // namespace

int runProgram(int argc, char** argv) {
    try {
        return runCommand(argc, argv);
    } catch (const Error& error) {
        printNotice(error.what());
        return error.exitStatus();
    } catch (const Interrupted& interrupted) {
        endBySignal(interrupted.signal);
    } catch (const std::exception& error) {
        printNotice(error.what());
        return 1;
    }
}

} // namespace zelvatone
