#include "cli/commands/PlayCommand.h"

#include "cli/commands/OptionValues.h"
#include "cli/commands/PlayRecording.h"
#include "cli/commands/PlaySession.h"
#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/Programs.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"
#include "host/threads/Interrupt.h"
#include "live/BackendChoice.h"

#include <CLI/CLI.hpp>

#include <sys/mman.h>
#include <sys/resource.h>

#include <cstdlib>
#include <exception>

namespace zelvatone {

namespace {

DeviceChoice deviceChoice(const PlayOptions& options) {
    constexpr int kSlowest = 8000; // Hz
    constexpr int kFastest = 192000;
    constexpr int kShortest = 16; // samples
    constexpr int kLongest = 8192;
    DeviceChoice choice{
        .output = options.output, .inputs = options.inputs, .rate = {}, .buffer = {}};
    if (options.rate) {
        choice.rate = wholeOption("--rate", *options.rate, kSlowest, kFastest);
    }
    if (options.buffer) {
        choice.buffer = wholeOption("--buffer", *options.buffer, kShortest, kLongest);
    }
    return choice;
}

KeyLayout keyLayout(const PlayOptions& options) {
    if (options.keys) {
        if (const auto layout = keyLayoutOf(*options.keys)) {
            return *layout;
        }
        throw UsageError(
            formatText("--keys takes qwerty, qwertz or azerty, not '{}'", *options.keys));
    }
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* locale = std::getenv(name); // NOLINT(concurrency-mt-unsafe): no thread sets any
        if (locale != nullptr && *locale != '\0') {
            return usualKeyLayout(locale);
        }
    }
    return KeyLayout::kQwerty;
}

// "74=Freq Drop"
ControllerMap controllerMap(const std::vector<std::string>& texts, HostedPlugin& plugin) {
    ControllerMap map = noControllers();
    const auto names = parameterNames(plugin);
    for (const std::string& text : texts) {
        const std::size_t sign = text.find('=');
        const auto number = wholeNumber(std::string_view(text).substr(0, sign));
        if (sign == std::string::npos || !number || *number < 0 || *number >= kControllers) {
            throw UsageError(formatText("--cc takes a controller, 0 to 127, and a parameter, as in "
                                        "74=Attack, not '{}'",
                                        text));
        }
        map.at(static_cast<std::size_t>(*number)) = static_cast<std::int16_t>(
            findParameter(names, std::string_view(text).substr(sign + 1)));
    }
    return map;
}

// As in a rendering, settings hold in every program that a program change may choose.
void setUp(HostedPlugin& plugin, const PluginSetup& setup) {
    applySetup(plugin, setup);
    const int start = currentProgram(plugin);
    const ProgramMap map = programsByNumber(plugin.programCount());
    for (const int program : map) {
        if (program >= 0 && program != start && !setup.settings.empty()) {
            selectProgram(plugin, program);
            applySettings(plugin, setup.settings);
        }
    }
    if (!setup.settings.empty() && plugin.programCount() > 0) {
        selectProgram(plugin, start);
    }
}

// Where the process may: a page that comes from the disk is too late for a block.
void lockMemory() {
    rlimit limit{};
    if (getrlimit(RLIMIT_MEMLOCK, &limit) == 0 && limit.rlim_cur == RLIM_INFINITY) {
        mlockall(MCL_CURRENT | MCL_FUTURE);
    }
}

// The player is called while this lives.
class Sounding {
public:
    Sounding(AudioBackend& backend, AudioClient& player) : backend_(backend) {
        backend.start(player);
    }
    ~Sounding() { backend_.stop(); }
    Sounding(const Sounding&) = delete;
    Sounding& operator=(const Sounding&) = delete;

private:
    AudioBackend& backend_;
};

// Until the user ends it, which is not an error. Returns the error that ended it, or none: a
// recording is completed first.
std::exception_ptr playUntilEnd(const PlaySession::Plan& plan) {
    const Sounding sounding(*plan.backend, *plan.player);
    try {
        PlaySession(plan).run();
    } catch (const Interrupted&) {
        return nullptr;
    } catch (const std::exception&) {
        return std::current_exception();
    }
    return nullptr;
}

void addDeviceOptions(CLI::App& command, PlayOptions& options) {
    command.add_flag("--list", options.list, "List the outputs and the keyboards, and exit");
    command
        .add_option("--output", options.output,
                    "Play on the device with this in its name; none: connect nothing")
        ->type_name("NAME");
    command
        .add_option("--input", options.inputs,
                    "Play from the keyboards with this in their names, not from all; none: from no "
                    "keyboard; may be repeated")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command.add_option("--rate", options.rate, "Sample rate, 8000 to 192000")->type_name("HZ");
    command.add_option("--buffer", options.buffer, "Block size, 16 to 8192; less is sooner heard")
        ->type_name("SAMPLES");
}

} // namespace

CLI::App* addPlayCommand(CLI::App& app, PlayOptions& options) {
    CLI::App* command = app.add_subcommand("play", "Play the instrument live");
    command->add_option("song", options.song, "A MIDI file to play along with")
        ->type_name("SONG.mid");
    addDeviceOptions(*command, options);
    command
        ->add_option("--record", options.record,
                     "Write the sound to FILE.wav, and what was played to FILE.mid and FILE.csv")
        ->type_name("FILE.wav");
    command
        ->add_option("--cc", options.controllers,
                     "Let a controller, 0 to 127, move a parameter; may be repeated")
        ->type_name("NUMBER=PARAMETER")
        ->allow_extra_args(false);
    command
        ->add_option(
            "--keys", options.keys,
            "The letters of the computer's keyboard: qwerty, qwertz or azerty; without it, "
            "as usual for the language")
        ->type_name("LAYOUT");
    command->add_flag("--editor", options.editor, "Open the plug-in's editor beside it");
    addSetupOptions(*command, options.setup);
    addPluginOptions(*command, options.plugin);
    command->footer("In a terminal, the computer's keyboard is a piano; ? shows its keys.\n"
                    "It ends at Ctrl+C, or at SIGTERM.\n"
                    "Examples:\n"
                    "  zelvatone play\n"
                    "  zelvatone play --program Organ --cc \"74=Freq Drop\"\n"
                    "  zelvatone play --record take.wav");
    return command;
}

void runPlay(const PlayOptions& options, const StandardOutput& output) {
    if (options.list) {
        output.print(deviceList());
        return;
    }
    const DeviceChoice devices = deviceChoice(options);
    const KeyLayout layout = keyLayout(options);
    const auto sound = recordingPath(options);
    const PluginSetup setup = readSetup(options.setup);
    const Song song = options.song ? readSong(userPath(*options.song)) : songWithoutEvents();
    const PluginLibrary library = loadPlugin(options.plugin);

    const InterruptWatch watch;
    const RawTerminal terminal(kAskForPlaces, kAskNoMore);
    const auto backend = openBackend(devices);
    const AudioFormat format = backend->format();
    const StreamFormat stream{static_cast<double>(format.rate), format.buffer};
    HostedPlugin plugin(library, stream);
    HostedPlugin spare(library, stream);
    setUp(plugin, setup);
    setUp(spare, setup);
    const TakeClock clock(song.tempo, format.rate);
    std::optional<PlayRecording> recording;
    if (sound) {
        recording.emplace(options, *sound, format, plugin, clock);
    }
    LivePlayer player({.plugin = &plugin,
                       .spare = &spare,
                       .song = &song,
                       .take = recording ? &recording->rings() : nullptr,
                       .programs = programsByNumber(plugin.programCount()),
                       .controllers = controllerMap(options.controllers, plugin)});
    std::optional<PlayEditor> editor;
    if (options.editor) {
        editor.emplace(library, stream, setup);
    }
    const PlaySession::Plan plan{.player = &player,
                                 .backend = backend.get(),
                                 .take = recording ? &recording->writer() : nullptr,
                                 .editor = editor ? &*editor : nullptr,
                                 .terminal = &terminal,
                                 .programs = programNames(plugin),
                                 .parameters = parameterNames(plugin),
                                 .program = currentProgram(plugin),
                                 .layout = layout};
    lockMemory();
    const auto error = playUntilEnd(plan);
    editor.reset();
    if (recording) {
        recording->finish(output);
    }
    if (error) {
        std::rethrow_exception(error);
    }
}

} // namespace zelvatone
