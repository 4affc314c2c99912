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
#include "tour/StopFiles.h"
#include "tour/TourPage.h"
#include "tour/TourPhrase.h"

#include <CLI/CLI.hpp>

#include <mutex>

namespace zelvatone {

namespace {

// The stops, known by name and not rendered yet.
Tour plannedTour(const PluginLibrary& library) {
    HostedPlugin plugin(library, {});
    if (plugin.programCount() == 0) {
        throw InputError(plugin.path() + " has no programs");
    }
    Tour tour;
    tour.instrument = plugin.text(effGetEffectName);
    const auto names = programNames(plugin);
    for (std::size_t i = 0; i < names.size(); ++i) {
        TourStop stop;
        stop.number = static_cast<int>(i);
        stop.name = names[i];
        stop.file = stopFile(stop.number, static_cast<int>(names.size()), stop.name);
        tour.stops.push_back(stop);
    }
    return tour;
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

void makeStops(const PluginLibrary& library, Tour& tour, const std::filesystem::path& folder,
               int threads, bool isShown) {
    const Song phrase = tourPhrase();
    tour.phraseSeconds = phrase.seconds;
    const Spectrogram spectrogram(kTourRate);
    const NoteMeter meter(kTourRate);
    StopCounter counter(tour.stops.size(), isShown);
    ThreadTeam team(std::min(threads, static_cast<int>(tour.stops.size())));
    team.run(static_cast<int>(tour.stops.size()), [&](int number) {
        TourStop& stop = tour.stops[static_cast<std::size_t>(number)];
        TourSound sound;
        renderStop(library, phrase, meter, stop, sound);
        writeStop(folder, stop, sound, spectrogram);
        counter.finish(stop.name);
    });
}

void checkFolders(const TourOptions& options) {
    if (options.folder.empty() && options.site.empty()) {
        throw UsageError("--output or --site is required; see 'zelvatone tour --help'");
    }
    if (!options.folder.empty() && !options.site.empty()) {
        throw UsageError("--output and --site cannot both be given");
    }
}

void writeTexts(const std::filesystem::path& folder, const TourTexts& texts) {
    for (const auto& [name, text] : texts) {
        OutputFile file(folder / name);
        file.write(text.data(), static_cast<std::int64_t>(text.size()));
        file.commit();
    }
}

} // namespace

CLI::App* addTourCommand(CLI::App& app, TourOptions& options) {
    CLI::App* command = app.add_subcommand("tour", "Make a page to hear and to see every program");
    command->add_option("-o,--output", options.folder, "The folder for the page and its files")
        ->type_name("FOLDER");
    command
        ->add_option("--site", options.site,
                     "The same for a web server: style and script in files of their own")
        ->type_name("FOLDER");
    command
        ->add_option("--play-at", options.keys,
                     "The address of the page in a browser, to which every program links")
        ->type_name("ADDRESS");
    command
        ->add_option("--threads", options.threads,
                     "Programs to render at once, 1 to 64; auto: one per processor")
        ->type_name("auto|N")
        ->capture_default_str();
    addPluginOptions(*command, options.plugin);
    command->add_flag("-q,--quiet", options.quiet, "No progress bar and no closing line");
    command->footer("Examples:\n"
                    "  zelvatone tour -o tour\n"
                    "  xdg-open tour/index.html\n"
                    "  zelvatone tour --site site");
    return command;
}

void runTour(const TourOptions& options, const StandardOutput& output) {
    checkFolders(options);
    const bool isSite = !options.site.empty();
    const std::string& name = isSite ? options.site : options.folder;
    const int threads = threadsOption(options.threads);
    const PluginLibrary library = loadPlugin(options.plugin);
    Tour tour = plannedTour(library);
    tour.plugin = options.plugin.path;
    tour.keys = options.keys;

    const InterruptWatch watch;
    OutputFolder folder(name, holdsOnlyATour);
    makeStops(library, tour, folder.hidden(), threads, !options.quiet);
    writeTexts(folder.hidden(), isSite ? siteTexts(tour) : tourTexts(tour));
    InterruptWatch::check();
    folder.commit();
    if (!options.quiet) {
        const auto page = std::filesystem::path(name) / "index.html";
        output.print(formatText("{}: {} programs\n", cleanText(page.string()), tour.stops.size()));
    }
}

} // namespace zelvatone
