// The command-line host: reads the command line, runs the command, says in one line what went
// wrong.

#include "cli/Main.h"

#include "cli/HelpFormatter.h"
#include "cli/UsageMessage.h"
#include "cli/commands/DatasetCommand.h"
#include "cli/commands/EditCommand.h"
#include "cli/commands/InfoCommand.h"
#include "cli/commands/ParamsCommand.h"
#include "cli/commands/PlayCommand.h"
#include "cli/commands/PresetCommand.h"
#include "cli/commands/ProgramsCommand.h"
#include "cli/commands/RenderCommand.h"
#include "cli/commands/ScreenshotCommand.h"
#include "cli/commands/SongCommand.h"
#include "cli/commands/TourCommand.h"
#include "cli/terminal/Notice.h"
#include "host/Error.h"
#include "host/threads/Interrupt.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <iostream>
#include <utility>

namespace zelvatone {

namespace {

// Every command with its options.
class Commands {
public:
    explicit Commands(CLI::App& app) {
        add(addRenderCommand(app, render_), render_.plugin, runRender, render_);
        add(addPlayCommand(app, play_), play_.plugin, runPlay, play_);
        add(addSongCommand(app, song_), song_.plugin, runSong, song_);
        add(addTourCommand(app, tour_), tour_.plugin, runTour, tour_);
        add(addDatasetCommand(app, dataset_), dataset_.plugin, runDataset, dataset_);
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
    PlayOptions play_;
    SongOptions song_;
    TourOptions tour_;
    DatasetOptions dataset_;
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
    app.formatter(std::make_shared<HelpFormatter>()); // commands made later inherit it
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.footer("Examples:\n"
               "  zelvatone render song.mid -o song.wav\n"
               "  zelvatone render song.mid -o song.wav --program Miniarp\n"
               "  zelvatone tour -o tour\n"
               "'zelvatone help COMMAND' or 'zelvatone COMMAND --help' describes a command.\n"
               "Exit status: 0 success, 1 bad file or plug-in, 2 bad command line.");
}

// False when the command line asked for help or the version, which has been printed then.
bool parse(CLI::App& app, int argc, char** argv) {
    try {
        std::vector<std::string> words = commandWords(argc, argv);
        std::reverse(words.begin(), words.end()); // as the library takes them
        app.parse(std::move(words));
    } catch (const CLI::Success& help) {
        checkWords(app);
        app.exit(help);
        std::cout.flush();
        if (!std::cout) {
            throw InputError("cannot write to standard output");
        }
        return false;
    } catch (const CLI::ParseError& error) {
        throw UsageError(usageMessage(app, error));
    }
    return true;
}

int runCommand(int argc, char** argv) {
    CLI::App app("Plays MIDI files through the zelvatone instrument, or another VST 2.4 plug-in.",
                 "zelvatone");
    describe(app);
    const Commands commands(app);
    // An unknown command is named by checkCommand(). Commands made earlier do not inherit this.
    app.allow_extras();
    if (!parse(app, argc, argv)) {
        return 0;
    }
    checkCommand(app);
    checkPaths(app);
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
