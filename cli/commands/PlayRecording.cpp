#include "cli/commands/PlayRecording.h"

#include "cli/terminal/Notice.h"
#include "host/Error.h"
#include "host/files/InputGuard.h"
#include "host/files/UserPath.h"
#include "host/plugin/ParameterLookup.h"
#include "host/render/Performer.h"
#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/text/ShellWord.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zelvatone {

namespace {

// A disk may stand still for so long.
constexpr double kRecordingSeconds = 8.0;

std::filesystem::path wavePath(const std::string& text) {
    std::filesystem::path path = userPath(text);
    if (lowerCase(path.extension().string()) != ".wav") {
        throw UsageError(formatText("a recording is a WAV file: end '{}' in .wav", text));
    }
    return path;
}

// A recording replaces older ones of its name, but nothing that is read.
void checkTargets(const PlayOptions& options, const std::filesystem::path& sound) {
    std::vector<std::filesystem::path> outputs;
    for (const char* extension : {".wav", ".mid", ".csv", ".programs.csv"}) {
        outputs.push_back(std::filesystem::path(sound).replace_extension(extension));
    }
    std::vector<std::filesystem::path> inputs;
    for (const auto& input : {options.song, options.setup.preset}) {
        if (input) {
            inputs.push_back(userPath(*input));
        }
    }
    checkOutputs(outputs, inputs);
}

// What program changes choose, as lines of a rendering's --programs; empty for an instrument
// without programs.
std::string programLines(int count) {
    std::string lines;
    const ProgramMap map = programsByNumber(count);
    for (std::size_t change = 0; change < map.size() && map.at(change) >= 0; ++change) {
        lines += formatText("{}, {}\n", change, map.at(change));
    }
    return lines;
}

// The options that set the instrument up again.
std::string setupOptions(const PlayOptions& options) {
    std::string text;
    const auto add = [&text](const char* option, const std::string& value) {
        text += formatText(" {} {}", option, shellWord(value));
    };
    if (options.setup.preset) {
        add("--preset", *options.setup.preset);
    }
    if (options.setup.program) {
        add("--program", *options.setup.program);
    }
    for (const std::string& setting : options.setup.settings) {
        add("--set", setting);
    }
    if (!options.plugin.path.empty()) {
        add("--plugin", options.plugin.path);
    }
    return text;
}

// That makes the samples of a recording again, of a plug-in with `programs` programs.
std::string renderCommand(const PlayOptions& options, const std::filesystem::path& sound,
                          const AudioFormat& format, int programs) {
    const auto beside = [&](const char* extension) {
        return shellWord(std::filesystem::path(sound).replace_extension(extension).string());
    };
    std::string command = formatText("zelvatone render {} --automate {} -o {} --format float "
                                     "--tail 0 --rate {} --block {}",
                                     beside(".mid"), beside(".csv"), beside(".again.wav"),
                                     format.rate, format.buffer);
    if (programs > 0) {
        command += " --programs " + beside(".programs.csv");
    }
    return command + setupOptions(options);
}

int channelsOf(const HostedPlugin& plugin) {
    return std::min(2, plugin.outputCount());
}

} // namespace

std::optional<std::filesystem::path> recordingPath(const PlayOptions& options) {
    if (!options.record) {
        return std::nullopt;
    }
    std::filesystem::path sound = wavePath(*options.record);
    checkTargets(options, sound);
    return sound;
}

PlayRecording::PlayRecording(const PlayOptions& options, std::filesystem::path sound,
                             const AudioFormat& format, HostedPlugin& plugin,
                             const TakeClock& clock)
    : sound_(std::move(sound)),
      again_(renderCommand(options, sound_, format, plugin.programCount())),
      rings_(format.rate, channelsOf(plugin), kRecordingSeconds),
      writer_({.sound = sound_,
               .rate = format.rate,
               .channels = channelsOf(plugin),
               .parameterNames = parameterNames(plugin),
               .command = again_,
               .programs = programLines(plugin.programCount())},
              rings_, clock) {}

void PlayRecording::finish(const StandardOutput& output) {
    writer_.finish();
    if (!writer_.warning().empty()) {
        printNotice(writer_.warning());
    }
    output.print(formatText("{}: {:.1f} s; to render it again:\n{}\n", sound_.string(),
                            writer_.seconds(), again_));
}

} // namespace zelvatone
