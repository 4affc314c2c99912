#include "cli/commands/DatasetCommand.h"

#include "cli/commands/OptionValues.h"
#include "cli/commands/RenderSettings.h"
#include "cli/terminal/Notice.h"
#include "cli/terminal/ProgressBar.h"
#include "dataset/DatasetRun.h"
#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/plugin/PluginText.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"
#include "host/text/ShellWord.h"
#include "host/threads/Interrupt.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <limits>

namespace zelvatone {

namespace {

constexpr int kMostSounds = std::numeric_limits<int>::max();
constexpr double kShortest = 0.01; // seconds of a sound
constexpr double kLongest = 600.0;

std::uint64_t seedOf(const std::string& text) {
    std::uint64_t seed = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), seed);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        throw UsageError(formatText(
            "--seed takes a whole number from 0 to 18446744073709551615, not '{}'", text));
    }
    return seed;
}

double holdOf(const DatasetOptions& options, double seconds) {
    constexpr double kUsualShare = 0.75; // leaves a quarter of the sound to the release
    return options.hold ? realOption("--hold", *options.hold, 0.0, seconds,
                                     formatText("0 to {} seconds", options.seconds))
                        : kUsualShare * seconds;
}

bool isFlac(const std::string& audio) {
    if (audio != "wav" && audio != "flac") {
        throw UsageError(formatText("--audio takes wav or flac, not '{}'", audio));
    }
    return audio == "flac";
}

// The sounds, which a table may count too.
std::int64_t countOf(const DatasetOptions& options, const SoundTable& table) {
    if (!options.count && table.isEmpty()) {
        throw UsageError("a dataset needs --count or --parameters");
    }
    if (!options.count) {
        return table.rows();
    }
    const int count = wholeOption("--count", *options.count, 1, kMostSounds);
    if (!table.isEmpty() && count > table.rows()) {
        throw UsageError(
            formatText("--count is {}, and {} has {} sounds", count, *options.table, table.rows()));
    }
    return count;
}

void addRanges(DatasetPlan& plan, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        for (const ValueRange& range : rangesOf(text)) {
            const auto same =
                std::find_if(plan.ranges.begin(), plan.ranges.end(), [&](const ValueRange& other) {
                    return other.parameter == range.parameter;
                });
            if (same == plan.ranges.end()) {
                plan.ranges.push_back(range);
            } else {
                *same = range; // "all", and then some in a range of their own
            }
        }
    }
}

DatasetPlan planFrom(const DatasetOptions& options) {
    DatasetPlan plan;
    plan.seed = seedOf(options.seed);
    plan.seconds = realOption("--seconds", options.seconds, kShortest, kLongest,
                              formatText("{} to {} seconds", kShortest, kLongest));
    plan.holdSeconds = holdOf(options, plan.seconds);
    plan.sampleRate = wholeOption("--rate", options.rate, 8000, 192000);
    plan.tempo = realOption("--tempo", options.tempo, 10.0, 1000.0, "10 to 1000 beats per minute");
    plan.isFlac = isFlac(options.audio);
    plan.programs = programsOf(options.programs);
    plan.notes = numbersOf("--notes", options.notes, 0, 127);
    plan.velocities = numbersOf("--velocities", options.velocities, 1, 127);
    addRanges(plan, options.ranges);
    if (options.table) {
        plan.table = readSoundTable(userPath(*options.table));
    }
    plan.count = countOf(options, plan.table);
    plan.perShard = options.perShard ? wholeOption("--per-shard", *options.perShard, 1, kMostSounds)
                                     : usualPerShard(plan);
    return plan;
}

// The command that makes the same dataset: without what its bytes do not depend on.
std::string commandOf(const DatasetOptions& options) {
    std::string command = "zelvatone dataset OUT";
    const auto add = [&](const char* name, const std::string& value) {
        command += formatText(" {} {}", name, shellWord(value));
    };
    if (options.count) {
        add("--count", *options.count);
    }
    add("--seed", options.seed);
    add("--programs", options.programs);
    add("--notes", options.notes);
    add("--velocities", options.velocities);
    for (const std::string& range : options.ranges) {
        add("--vary", range);
    }
    if (options.table) {
        add("--parameters", "table.csv");
    }
    add("--seconds", options.seconds);
    if (options.hold) {
        add("--hold", *options.hold);
    }
    add("--tempo", options.tempo);
    add("--rate", options.rate);
    add("--audio", options.audio);
    if (options.perShard) {
        add("--per-shard", *options.perShard);
    }
    return command;
}

// "1:02:03" or "2:03".
std::string durationText(double seconds) {
    const auto whole = static_cast<std::int64_t>(seconds);
    const std::int64_t hours = whole / 3600;
    return hours > 0 ? formatText("{}:{:02}:{:02}", hours, whole / 60 % 60, whole % 60)
                     : formatText("{}:{:02}", whole / 60, whole % 60);
}

// The progress bar, with the sounds a second so far and the time that the rest will take.
class Progress {
public:
    explicit Progress(bool isShown) : bar_(isShown) {}

    void show(std::int64_t done, std::int64_t all) {
        const double rate = static_cast<double>(done) / std::max(seconds(), 1e-3);
        bar_.show(static_cast<double>(done) / static_cast<double>(all),
                  formatText("{:.0f} sounds/s, {} left", rate,
                             durationText(static_cast<double>(all - done) / std::max(rate, 1e-3))));
    }
    double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    ProgressBar bar_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

DatasetWatch watchWith(Progress& progress) {
    return {
        .progress = [&progress](std::int64_t done, std::int64_t all) { progress.show(done, all); },
        .notice = printNotice};
}

std::string closingLine(const DatasetOptions& options, const DatasetPlan& plan,
                        const DatasetResult& result, double seconds) {
    std::string line =
        formatText("{}: {} sounds made in {}, {} of {} shards were finished before\n",
                   cleanText(options.folder), result.madeSounds, durationText(seconds),
                   result.keptShards, plan.shards());
    if (result.missingShards > 0) {
        return line + formatText("{} shards of other parts are missing; the last part to end "
                                 "writes the manifest\n",
                                 result.missingShards);
    }
    return line +
           formatText("{}: {} sounds, {} silent, {} beyond full scale\n",
                      cleanText((std::filesystem::path(options.folder) / "manifest.json").string()),
                      plan.count, result.silent, result.clipped);
}

void make(const DatasetOptions& options, const StandardOutput& output) {
    const int threads = threadsOption(options.threads);
    const ShardShare share = shareOf(options.share);
    const DatasetPlan plan = planFrom(options);
    DatasetFolder folder(userPath(options.folder));
    folder.prepare(plan, commandOf(options), options.table ? userPath(*options.table) : "");
    DatasetResult result;
    double seconds = 0.0;
    {
        Progress progress(!options.quiet);
        result = makeDataset(plan, folder, share, threads, watchWith(progress));
        seconds = progress.seconds();
    }
    if (!options.quiet) {
        output.print(closingLine(options, plan, result, seconds));
    }
}

void verify(const DatasetOptions& options, const StandardOutput& output) {
    const int threads = threadsOption(options.threads);
    const int sample = options.sample == "all"
                           ? kMostSounds
                           : wholeOption("--sample", options.sample, 1, kMostSounds);
    DatasetFolder folder(userPath(options.folder));
    const DatasetPlan plan = folder.open();
    {
        Progress progress(!options.quiet);
        verifyDataset(plan, folder, sample, threads, watchWith(progress));
    }
    if (!options.quiet) {
        output.print(formatText("{}: {} shards are whole, {} of {} sounds were rendered again and "
                                "are the same\n",
                                cleanText(options.folder), plan.shards(),
                                std::min<std::int64_t>(sample, plan.count), plan.count));
    }
}

void addSoundOptions(CLI::App& command, DatasetOptions& options) {
    command.add_option("--count", options.count, "How many sounds")->type_name("N");
    command.add_option("--seed", options.seed, "Another number gives other sounds")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option("--programs", options.programs,
                    "Programs to draw from, by name, beginning of a name or number")
        ->type_name("all|NAMES")
        ->capture_default_str();
    command.add_option("--notes", options.notes, "Notes to draw from, 0 to 127; 60 is middle C")
        ->type_name("NUMBERS")
        ->capture_default_str();
    command.add_option("--velocities", options.velocities, "Velocities to draw from, 1 to 127")
        ->type_name("NUMBERS")
        ->capture_default_str();
    command
        .add_option("--vary", options.ranges,
                    "Draw a parameter from a range, in values from 0 to 1 or as 'zelvatone params' "
                    "shows them (Attack=0:0.5, \"Attack=0.01 s:1 s\"), or all parameters; may be "
                    "repeated")
        ->type_name("NAME=LOW:HIGH|all")
        ->allow_extra_args(false);
    command
        .add_option("--parameters", options.table,
                    "Take notes and parameters in units from a table, a sound a line, in place of "
                    "drawing them")
        ->type_name("FILE");
    command.add_option("--seconds", options.seconds, "Length of each sound, 0.01 to 600")
        ->type_name("SECONDS")
        ->capture_default_str();
    command.add_option("--hold", options.hold, "End of the note; three quarters without it")
        ->type_name("SECONDS");
    command.add_option("--tempo", options.tempo, "Beats per minute, 10 to 1000")
        ->type_name("BPM")
        ->capture_default_str();
}

void addFileOptions(CLI::App& command, DatasetOptions& options) {
    command.add_option("--rate", options.rate, "Sample rate, 8000 to 192000")
        ->type_name("HZ")
        ->capture_default_str();
    command.add_option("--audio", options.audio, "Sound files: WAV of floats or FLAC of 24 bits")
        ->type_name("wav|flac")
        ->capture_default_str();
    command
        .add_option("--per-shard", options.perShard,
                    "Sounds in an archive; as many as make about 1 GB without it")
        ->type_name("N");
    command
        .add_option("--shard", options.share,
                    "Make one part of the archives, the I-th of N; all parts make the dataset")
        ->type_name("I/N")
        ->capture_default_str();
    command.add_flag("--verify", options.verifies,
                     "Check a dataset: every checksum, and some sounds rendered again");
    command.add_option("--sample", options.sample, "Sounds that --verify renders again")
        ->type_name("N|all")
        ->capture_default_str();
}

} // namespace

CLI::App* addDatasetCommand(CLI::App& app, DatasetOptions& options) {
    CLI::App* command =
        app.add_subcommand("dataset", "Render many sounds for machines to learn from");
    command->add_option("folder", options.folder, "The folder for the dataset; made or completed")
        ->required()
        ->type_name("FOLDER");
    addSoundOptions(*command, options);
    addFileOptions(*command, options);
    command
        ->add_option("--threads", options.threads,
                     "Sounds to render at once, 1 to 64; auto: one per processor")
        ->type_name("auto|N")
        ->capture_default_str();
    command->add_flag("-q,--quiet", options.quiet, "No progress bar and no closing lines");
    command->add_flag("--verbose", options.plugin.verbose,
                      "Show on standard error what the instrument prints");
    command->footer("Examples:\n"
                    "  zelvatone dataset sounds --count 10000 --seed 1 --vary all\n"
                    "  zelvatone dataset sounds --count 10000 --seed 1 --vary all --shard 2/8\n"
                    "  zelvatone dataset sounds --verify");
    return command;
}

void runDataset(const DatasetOptions& options, const StandardOutput& output) {
    const InterruptWatch watch;
    if (options.verifies) {
        verify(options, output);
    } else {
        make(options, output);
    }
}

} // namespace zelvatone
