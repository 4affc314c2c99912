#include "cli/commands/TourCommand.h"

#include "cli/commands/RenderSettings.h"
#include "cli/terminal/ProgressBar.h"
#include "host/Error.h"
#include "host/files/OutputFile.h"
#include "host/files/OutputFolder.h"
#include "host/plugin/PluginText.h"
#include "host/plugin/Programs.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"
#include "host/threads/ThreadTeam.h"
#include "tour/Spectrogram.h"
#include "tour/TourPage.h"
#include "tour/TourPhrase.h"

#include <CLI/CLI.hpp>

#include <mutex>

namespace zelvatone {

namespace {

struct Instrument {
    std::string name;
    std::vector<TourStop> stops;
};

// The stops, known by name and not rendered yet.
Instrument instrumentOf(const PluginLibrary& library) {
    HostedPlugin plugin(library, {});
    if (plugin.programCount() == 0) {
        throw InputError(plugin.path() + " has no programs");
    }
    Instrument instrument;
    instrument.name = plugin.text(effGetEffectName);
    const auto names = programNames(plugin);
    for (std::size_t i = 0; i < names.size(); ++i) {
        TourStop stop;
        stop.number = static_cast<int>(i);
        stop.name = names[i];
        stop.file = stopFile(stop.number, static_cast<int>(names.size()), stop.name);
        instrument.stops.push_back(stop);
    }
    return instrument;
}

// Counts finished stops from several threads.
class StopCounter {
public:
    StopCounter(std::size_t count, bool isShown) : count_(count), progress_(isShown) {}

    void finish(const std::string& name) {
        const std::scoped_lock lock(mutex_);
        ++finished_;
        progress_.show(static_cast<double>(finished_) / static_cast<double>(count_), name);
    }

private:
    std::mutex mutex_; // guards all below
    std::size_t finished_ = 0;
    std::size_t count_;
    ProgressBar progress_;
};

void makeStops(const PluginLibrary& library, std::vector<TourStop>& stops, const Song& song,
               const std::filesystem::path& folder, int threads, bool isShown) {
    const Spectrogram spectrogram(kTourRate);
    StopCounter counter(stops.size(), isShown);
    ThreadTeam team(std::min(threads, static_cast<int>(stops.size())));
    team.run(static_cast<int>(stops.size()), [&](int number) {
        TourStop& stop = stops[static_cast<std::size_t>(number)];
        TourSound sound;
        renderStop(library, song, stop, sound);
        writeStop(folder, stop, sound, spectrogram);
        counter.finish(stop.name);
    });
}

void writeText(const std::filesystem::path& path, const std::string& text) {
    OutputFile file(path);
    file.write(text.data(), static_cast<std::int64_t>(text.size()));
    file.commit();
}

} // namespace

CLI::App* addTourCommand(CLI::App& app, TourOptions& options) {
    CLI::App* command = app.add_subcommand("tour", "Make a page to hear and to see every program");
    command->add_option("-o,--output", options.folder, "The folder for the page and its files")
        ->required()
        ->type_name("FOLDER");
    command
        ->add_option("--threads", options.threads,
                     "Programs to render at once, 1 to 64; auto: one per processor")
        ->type_name("auto|N")
        ->capture_default_str();
    addPluginOptions(*command, options.plugin);
    command->add_flag("-q,--quiet", options.quiet, "No progress bar and no closing line");
    command->footer("Examples:\n"
                    "  zelvatone tour -o tour\n"
                    "  xdg-open tour/index.html");
    return command;
}

void runTour(const TourOptions& options, const StandardOutput& output) {
    const int threads = threadsOption(options.threads);
    const PluginLibrary library = loadPlugin(options.plugin);
    Instrument instrument = instrumentOf(library);
    const Song song = tourPhrase();

    const InterruptWatch watch;
    OutputFolder folder(options.folder, holdsOnlyATour);
    makeStops(library, instrument.stops, song, folder.hidden(), threads, !options.quiet);
    writeText(folder.hidden() / "index.html",
              tourPage(instrument.name, song.seconds, instrument.stops));
    InterruptWatch::check();
    folder.commit();
    if (!options.quiet) {
        const auto page = std::filesystem::path(options.folder) / "index.html";
        output.print(
            formatText("{}: {} programs\n", cleanText(page.string()), instrument.stops.size()));
    }
}

} // namespace zelvatone
