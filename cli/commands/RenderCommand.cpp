#include "cli/commands/RenderCommand.h"

#include "cli/commands/Recorder.h"
#include "cli/commands/RenderParts.h"
#include "cli/commands/RenderReport.h"
#include "cli/commands/RenderSettings.h"
#include "cli/terminal/Notice.h"
#include "cli/terminal/ProgressBar.h"
#include "host/Error.h"
#include "host/audio/NonFinite.h"
#include "host/audio/SoundFileWriter.h"
#include "host/files/DiskSpace.h"
#include "host/files/InputGuard.h"
#include "host/files/UserPath.h"
#include "host/midi/EndlessNotes.h"
#include "host/render/RecordingEnd.h"
#include "host/render/Stems.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <CLI/CLI.hpp>

#include <chrono>

namespace zelvatone {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Renders round after round into the files until the recording is over.
RenderReport record(Ensemble& ensemble, const RenderSettings& settings, std::int64_t songFrames,
                    Recorder& recorder, ProgressBar& progress) {
    const auto start = Clock::now();
    RecordingEnd end(songFrames, settings.tailSeconds, settings.stream.sampleRate);
    RenderReport report;
    while (!end.isOver()) {
        InterruptWatch::check();
        const std::span<float> mix = ensemble.renderRound();
        const std::int64_t taken = end.take(mix, ensemble.channels()) * ensemble.channels();
        const std::span<float> kept = mix.first(static_cast<std::size_t>(taken));
        report.brokenSamples += silenceNonFinite(kept);
        recorder.take(kept);
        progress.show(static_cast<double>(end.frames()) / static_cast<double>(songFrames + 1),
                      speedText(static_cast<double>(end.frames()) / settings.stream.sampleRate,
                                secondsSince(start)));
    }
    InterruptWatch::check();
    recorder.finish();
    report.seconds = static_cast<double>(end.frames()) / settings.stream.sampleRate;
    report.renderSeconds = secondsSince(start);
    report.peakDecibels = recorder.peakDecibels();
    report.isEndless = end.wasEndless();
    return report;
}

// All files are complete before the first one appears.
void commit(SoundFileWriter& file, std::optional<Stems>& stems) {
    file.complete();
    if (stems) {
        stems->commit();
    }
    file.commit();
}

std::vector<std::filesystem::path> outputsOf(const RenderOptions& options,
                                             const std::optional<Stems>& stems) {
    std::vector<std::filesystem::path> outputs{userPath(options.output)};
    if (stems) {
        const auto paths = stems->paths();
        outputs.insert(outputs.end(), paths.begin(), paths.end());
    }
    return outputs;
}

void checkSpace(const std::vector<std::filesystem::path>& outputs, const RenderSettings& settings,
                std::int64_t frames) {
    std::vector<DiskDemand> demands;
    demands.reserve(outputs.size());
    for (const auto& output : outputs) {
        // Samples that wait for their level are floating-point numbers, beside the mix.
        const std::int64_t waiting =
            settings.peak ? frames * settings.file.channels * bytesPerSample(SampleKind::kFloat)
                          : 0;
        demands.push_back({output, leastFileSize(settings.file, frames)});
        demands.push_back({outputs[0], waiting});
    }
    try {
        checkDiskSpace(demands);
    } catch (const InputError& error) {
        throw InputError(formatText("{}; --force starts all the same", error.what()));
    }
}

FinishPlan finishPlan(const RenderSettings& settings, std::int64_t songFrames) {
    FinishPlan plan;
    plan.isMono = settings.isMono;
    plan.dcBlockHz = settings.blocksDc ? kDcBlockHz : 0.0;
    if (!settings.tailSeconds) {
        const FadeOut fade = endlessFade(songFrames, settings.stream.sampleRate);
        plan.fadeStart = fade.start;
        plan.fadeEnd = fade.end;
    }
    return plan;
}

// A line for each stem that clips.
std::string stemLines(const std::optional<Stems>& stems) {
    std::string lines;
    for (std::size_t part = 0; stems && part < stems->size(); ++part) {
        if (stems->clippedSamples(part) > 0) {
            lines += stemLine(stems->paths()[part].string(), stems->clippedSamples(part));
        }
    }
    return lines;
}

// What to do about files that clip, the loudest with such a peak; empty for none.
std::string clippingLine(const RenderSettings& settings, double peakDecibels) {
    return settings.peak ? adviceLine("--normalize", settings.peakDecibels, peakDecibels)
                         : adviceLine("--gain", settings.gainDecibels, peakDecibels);
}

// A slip in a song can make hours of it.
void announceLength(const std::string& song, double seconds) {
    constexpr double kLong = 3600.0; // an hour, more than any piece of music but a few
    if (seconds > kLong) {
        printNotice(formatText("{} makes {} of sound (minutes:seconds); Ctrl+C stops the rendering "
                               "and leaves no file",
                               song, lengthText(seconds)));
    }
}

// What is read stays as it is, under whatever name it is to be overwritten.
void checkTargets(const RenderOptions& options, const std::vector<std::filesystem::path>& outputs) {
    std::vector<std::filesystem::path> inputs{userPath(options.song)};
    for (const auto& input : {options.automate, options.programs, options.setup.preset}) {
        if (input) {
            inputs.push_back(userPath(*input));
        }
    }
    checkOutputs(outputs, inputs);
}

void addValue(CLI::App& command, const std::string& name, std::string& value,
              const std::string& typeName, const std::string& help) {
    command.add_option(name, value, help)->type_name(typeName)->capture_default_str();
}

void addChannelOptions(CLI::App& command, RenderOptions& options) {
    command.add_flag("--split", options.isSplit,
                     "An instrument for each channel that plays (the default); channel 10, the "
                     "drums of most files, is left out unless --channel names it");
    command.add_flag("--together", options.isTogether,
                     "One instrument for all channels that --channel does not name; bends, pedals "
                     "and volumes of each move all");
    command.add_flag("--raw", options.isRaw,
                     "One instrument, which gets the file as it is: pedals, volumes and bend "
                     "ranges are its own");
    command
        .add_option(
            "--channel", options.channels,
            "Give a MIDI channel, 1 to 16, its own instrument, with a program (name, number "
            "or .fxp file) and a level, -120 to 120 decibels, or leave it out (2=off); may be "
            "repeated")
        ->type_name("CHANNEL=PROGRAM[@LEVELdB]")
        ->allow_extra_args(false);
    command
        .add_option("--programs", options.programs,
                    "Follow program changes: lines of change (0 to 127, or a range), program; "
                    "not on a --channel, which keeps its own")
        ->type_name("FILE.csv");
    command
        .add_option("--stems", options.stems,
                    "Also write what each instrument plays to a file of its own")
        ->type_name("FOLDER");
    command
        .add_option("--automate", options.automate,
                    "Move parameters while the song plays: lines of seconds, parameter, value")
        ->type_name("FILE.csv");
}

constexpr const char* kExamples =
    "Examples:\n"
    "  zelvatone render song.mid -o song.wav\n"
    "  zelvatone render song.mid -o song.flac --rate 48000 --gain -6\n"
    "  zelvatone render song.mid -o song.wav --program Miniarp --set Attack=0.25\n"
    "  zelvatone render song.mid -o song.wav --channel 1=Organ@-6dB --stems parts";

} // namespace

CLI::App* addRenderCommand(CLI::App& app, RenderOptions& options) {
    CLI::App* command = app.add_subcommand("render", "Render a MIDI file to a sound file");
    command->add_option("song", options.song, "The MIDI file, of format 0 or 1, or an .rmi file")
        ->required()
        ->type_name("SONG.mid");
    command->add_option("-o,--output", options.output, "The sound file: .wav, .flac or .ogg")
        ->required()
        ->type_name("FILE");
    addValue(*command, "--rate", options.rate, "HZ", "Sample rate, 8000 to 192000");
    addValue(*command, "--block", options.block, "SAMPLES", "Block size, 1 to 65536");
    addValue(*command, "--format", options.format, "16|24|float",
             "Sample format: 16 bits, 24 bits or floating point; OGG ignores it");
    addValue(*command, "--gain", options.gain, "DB", "Gain of the whole mix, -120 to 120 decibels");
    command
        ->add_option("--normalize", options.normalize,
                     "Bring the largest sample to this level, -120 to 0 dBFS; -1 without a number")
        ->type_name("[DB]");
    command->add_flag("--mono", options.isMono, "One channel, the average of the outputs");
    command->add_flag("--dc-block", options.blocksDc,
                      "Take out what is below 5 Hz, as the offset of some programs");
    addValue(*command, "--tail", options.tail, "auto|SECONDS",
             "How long to render after the end of the song; auto: until half a second of "
             "silence, 30 s at most; up to 600 seconds");
    addValue(*command, "--threads", options.threads, "auto|N",
             "Channels to render at once, 1 to 64; auto: one per processor");
    addSetupOptions(*command, options.setup);
    addChannelOptions(*command, options);
    addPluginOptions(*command, options.plugin);
    command->add_flag("--force", options.force, "Start although the disk seems too small");
    command->add_flag("-q,--quiet", options.quiet, "No progress bar and no closing line");
    command->footer(kExamples);
    return command;
}

void runRender(const RenderOptions& options, const StandardOutput& output) {
    RenderSettings settings = renderSettings(options);
    const PluginSetup setup = readSetup(options.setup);
    const Song song = readSong(userPath(options.song));
    if (!song.warning.empty()) {
        printNotice(song.warning);
    }
    for (const int channel : silentChannels(song, settings)) {
        printNotice(
            formatText("channel {} plays nothing: {} has no note on it", channel, options.song));
    }
    const auto plans = planParts(song, settings, setup);
    const PluginLibrary library = loadPlugin(options.plugin);
    const std::int64_t songFrames = frameAt(song.seconds, settings.stream.sampleRate);
    Ensemble ensemble(makeParts(plans, library, song, settings,
                                {.automation = options.automate, .programs = options.programs}),
                      settings.threads, finishPlan(settings, songFrames));
    settings.file.channels = ensemble.channels();
    const double seconds = song.seconds + settings.tailSeconds.value_or(0.0);
    const std::int64_t frames = frameAt(seconds, settings.stream.sampleRate); // at least

    const InterruptWatch watch;
    SoundFileWriter writer(userPath(options.output), settings.file);
    writer.require(frames);
    std::optional<Stems> stems;
    if (options.stems) {
        stems.emplace(userPath(*options.stems), userPath(options.output).extension().string(),
                      settings.file, ensemble);
    }
    const auto outputs = outputsOf(options, stems);
    checkTargets(options, outputs);
    if (!options.force) {
        checkSpace(outputs, settings, frames);
    }
    if (!options.quiet) {
        announceLength(options.song, seconds);
    }
    RenderReport report;
    Recorder recorder(writer, stems, settings.peak);
    {
        ProgressBar progress(!options.quiet);
        report = record(ensemble, settings, songFrames, recorder, progress);
    }
    commit(writer, stems);
    if (!options.quiet) {
        report.clippedSamples = writer.clippedSamples();
        output.print(closingLine(options.output, report) + stemLines(stems) +
                     clippingLine(settings, recorder.clippedPeakDecibels()) +
                     (report.isEndless ? endlessLine(endlessNotes(song, isPlayed(plans))) : "") +
                     (leavesOutDrums(song, settings) ? drumsLine() : ""));
    }
}

} // namespace zelvatone
