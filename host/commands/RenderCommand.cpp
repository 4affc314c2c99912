#include "commands/RenderCommand.h"

#include "audio/LevelMeter.h"
#include "audio/SoundFileWriter.h"
#include "commands/RenderReport.h"
#include "commands/RenderSettings.h"
#include "render/InstrumentPlayer.h"
#include "render/RecordingEnd.h"
#include "terminal/Interrupt.h"
#include "terminal/ProgressBar.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>

namespace zelvatone {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Renders block after block into the writer until the recording is over.
RenderReport record(InstrumentPlayer& player, const RenderSettings& settings,
                    std::int64_t songFrames, SoundFileWriter& writer, ProgressBar& progress) {
    const auto start = Clock::now();
    const int channels = player.channels();
    RecordingEnd end(songFrames, settings.tailSeconds, settings.stream.sampleRate);
    LevelMeter meter;
    std::vector<float> mix(static_cast<std::size_t>(settings.stream.blockSize * channels));
    while (!end.isOver()) {
        InterruptWatch::check();
        player.renderBlock();
        std::fill(mix.begin(), mix.end(), 0.0F);
        player.addTo(mix, settings.gain);
        const auto taken = static_cast<std::size_t>(end.take(mix, channels) * channels);
        const std::span<float> kept(mix.data(), taken);
        meter.measure(kept);
        writer.write(kept);
        progress.show(static_cast<double>(end.frames()) / static_cast<double>(songFrames + 1),
                      speedText(static_cast<double>(end.frames()) / settings.stream.sampleRate,
                                secondsSince(start)));
    }
    InterruptWatch::check();
    return {static_cast<double>(end.frames()) / settings.stream.sampleRate, secondsSince(start),
            meter.peakDecibels(), writer.clippedSamples(), meter.brokenSamples()};
}

void addValue(CLI::App& command, const std::string& name, std::string& value,
              const std::string& typeName, const std::string& help) {
    command.add_option(name, value, help)->type_name(typeName)->capture_default_str();
}

} // namespace

CLI::App* addRenderCommand(CLI::App& app, RenderOptions& options) {
    CLI::App* command = app.add_subcommand("render", "Play a MIDI file into a sound file");
    command->add_option("song", options.song, "The MIDI file, of format 0 or 1")
        ->required()
        ->type_name("SONG.mid");
    command->add_option("-o,--output", options.output, "The sound file: .wav, .flac or .ogg")
        ->required()
        ->type_name("FILE");
    addValue(*command, "--rate", options.rate, "HZ", "Samples a second, 8000 to 192000");
    addValue(*command, "--block", options.block, "SAMPLES", "Samples in a block, 1 to 65536");
    addValue(*command, "--format", options.format, "16|24|float",
             "Samples of 16 or 24 bits or floating-point; OGG has its own");
    addValue(*command, "--gain", options.gain, "DB", "Decibels to make it louder or softer by");
    addValue(*command, "--tail", options.tail, "auto|SECONDS",
             "How long to go on behind the song's end; auto: until there has been silence for "
             "half a second, 30 s at most");
    addParameterOption(*command, options.plugin);
    addPluginOptions(*command, options.plugin);
    command->add_flag("-q,--quiet", options.quiet, "No progress bar and no closing line");
    command->footer("Examples:\n"
                    "  zelvatone render song.mid -o song.wav\n"
                    "  zelvatone render song.mid -o song.flac --rate 48000 --gain -6\n"
                    "  zelvatone render song.mid -o song.ogg --set Attack=0.25 --set Wave=0.5");
    return command;
}

void runRender(const RenderOptions& options, const StandardOutput& output) {
    RenderSettings settings = renderSettings(options);
    const Song song = readSong(options.song);
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, settings.stream);
    applySettings(plugin, settings.parameters);
    InstrumentPlayer player(plugin, song, scheduleEvents(song, settings.stream.sampleRate));
    settings.file.channels = player.channels();
    const std::int64_t songFrames = frameAt(song.seconds, settings.stream.sampleRate);

    const InterruptWatch watch;
    SoundFileWriter writer(options.output, settings.file);
    writer.require(songFrames);
    RenderReport report;
    {
        ProgressBar progress(!options.quiet);
        report = record(player, settings, songFrames, writer, progress);
    }
    writer.commit();
    if (!options.quiet) {
        output.print(closingLine(options.output, report));
    }
}

} // namespace zelvatone
