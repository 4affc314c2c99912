// The command-line host: reads the command line, runs the command, says in one line what went
// wrong.

#include "Error.h"
#include "commands/InfoCommand.h"
#include "commands/ParamsCommand.h"
#include "commands/RenderCommand.h"
#include "plugin/PluginText.h"
#include "terminal/Interrupt.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <iostream>

namespace zelvatone {

namespace {

struct Options {
    RenderOptions render;
    InfoOptions info;
    ParamsOptions params;
};

void printError(const std::string& line) {
    std::cerr << "zelvatone: " + cleanText(line) + "\n";
}

void describe(CLI::App& app) {
    app.set_version_flag("--version", "zelvatone " ZELVATONE_VERSION);
    app.set_help_flag("-h,--help", "Print this help and leave");
    app.footer(
        "Examples:\n"
        "  zelvatone render song.mid -o song.wav\n"
        "  zelvatone params --json\n"
        "'zelvatone COMMAND --help' tells more of each.\n"
        "Exit status: 0 done, 1 a file or plug-in is no good, 2 the command line is no good.");
}

UsageError commandError(const CLI::App& app) {
    const auto extras = app.remaining();
    const std::string commands = "the commands are render, info and params";
    return UsageError(extras.empty() ? "no command given; " + commands
                                     : "unknown command '" + extras[0] + "'; " + commands);
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
        const auto commands = app.get_subcommands();
        throw UsageError(std::string(error.what()) + "; see 'zelvatone " +
                         (commands.empty() ? "" : commands[0]->get_name() + " ") + "--help'");
    }
    if (app.get_subcommands().empty()) {
        throw commandError(app);
    }
    return true;
}

int runCommand(int argc, char** argv) {
    CLI::App app("Plays MIDI files through the zelvatone instrument, or another VST 2.4 plug-in.",
                 "zelvatone");
    describe(app);
    Options options;
    CLI::App* render = addRenderCommand(app, options.render);
    CLI::App* info = addInfoCommand(app, options.info);
    addParamsCommand(app, options.params);
    // What is no command is left for us to name. Commands made earlier do not follow this.
    app.allow_extras();
    if (!parse(app, argc, argv)) {
        return 0;
    }
    const bool verbose = options.render.plugin.verbose || options.info.plugin.verbose ||
                         options.params.plugin.verbose;
    const StandardOutput output(verbose);
    if (render->parsed()) {
        runRender(options.render, output);
    } else if (info->parsed()) {
        runInfo(options.info, output);
    } else {
        runParams(options.params, output);
    }
    return 0;
}

} // namespace

} // namespace zelvatone

int main(int argc, char** argv) {
    // A file that grows past the user's limit then fails to be written instead of ending us.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return zelvatone::runCommand(argc, argv);
    } catch (const zelvatone::Error& error) {
        zelvatone::printError(error.what());
        return error.exitStatus();
    } catch (const zelvatone::Interrupted& interrupted) {
        zelvatone::endBySignal(interrupted.signal);
    } catch (const std::exception& error) {
        zelvatone::printError(error.what());
        return 1;
    }
}
