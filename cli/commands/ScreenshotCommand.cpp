#include "cli/commands/ScreenshotCommand.h"

#include "cli/commands/OptionValues.h"
#include "host/Error.h"
#include "host/files/UserPath.h"
#include "host/plugin/EditorSession.h"
#include "host/plugin/FullNames.h"
#include "host/plugin/PluginText.h"
#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/threads/Interrupt.h"
#include "host/window/PictureDisplay.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>

namespace zelvatone {

namespace {

struct Place {
    int x; // pixels from the editor's top left
    int y;
};

// Where our own editor has its help button, and on the help's index a place inside the panel of
// each page.
constexpr Place kHelpButton{562, 15};
constexpr std::array<Place, 5> kHelpPanels{
    {{142, 113}, {487, 157}, {142, 266}, {142, 409}, {420, 409}}};

// A picture counts as finished when it stays the same for some turns: the display's reply to
// what the editor draws takes one or two.
constexpr int kSteadyTurns = 4;
// After so many, about three seconds, an editor that keeps moving is taken as it is.
constexpr int kMostTurns = 90;

bool isBlank(const TrueColourPicture& picture) {
    const auto& bytes = picture.pixels;
    return std::equal(bytes.begin() + 3, bytes.end(), bytes.begin());
}

// The window once it has changed from `before` and come to rest.
TrueColourPicture pictureAfter(const TrueColourPicture& before, EditorSession& session) {
    TrueColourPicture last = before;
    int steady = 0;
    for (int turn = 0; turn < kMostTurns && steady < kSteadyTurns; ++turn) {
        if (!session.turn()) {
            throw InputError("the window was closed before the editor was drawn");
        }
        TrueColourPicture picture = session.window().picture();
        const bool counts = picture == last && picture != before && !isBlank(picture);
        steady = counts ? steady + 1 : 0;
        last = std::move(picture);
    }
    return last;
}

TrueColourPicture clickedPicture(const TrueColourPicture& before, const Place& place,
                                 EditorSession& session) {
    session.window().click(place.x, place.y);
    TrueColourPicture picture = pictureAfter(before, session);
    if (picture == before) {
        throw InputError("the editor's help does not open");
    }
    return picture;
}

TrueColourPicture takePicture(HostedPlugin& plugin, std::optional<int> helpPage) {
    EditorSession session(plugin, WindowUse::kPicture);
    TrueColourPicture picture = pictureAfter({}, session);
    if (isBlank(picture)) {
        throw InputError(plugin.path() + " draws nothing in its editor");
    }
    if (helpPage) {
        picture = clickedPicture(picture, kHelpButton, session);
        if (*helpPage > 0) {
            const auto page = static_cast<std::size_t>(*helpPage - 1);
            picture = clickedPicture(picture, kHelpPanels.at(page), session);
        }
    }
    return picture;
}

void checkHelp(HostedPlugin& plugin, std::optional<int> helpPage) {
    if (helpPage && !isOurInstrument(plugin)) {
        throw InputError(formatText(
            "--help-page knows the editor of Zelvatone only, not that of {}", plugin.path()));
    }
}

std::optional<int> helpPageOption(const std::optional<std::string>& text) {
    constexpr int kPages = static_cast<int>(kHelpPanels.size());
    return text ? std::optional(wholeOption("--help-page", *text, 0, kPages)) : std::nullopt;
}

void checkExtension(const std::string& path) {
    if (lowerCase(userPath(path).extension().string()) != ".png") {
        throw UsageError(formatText("the picture is a PNG file: end '{}' in .png", path));
    }
}

} // namespace

CLI::App* addScreenshotCommand(CLI::App& app, ScreenshotOptions& options) {
    CLI::App* command = app.add_subcommand("screenshot", "Write a picture of the plug-in's editor");
    command->add_option("-o,--output", options.output, "The PNG file")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("--help-page", options.helpPage,
                     "Show the help: 0 for its index, 1 to 5 for a page")
        ->type_name("N");
    addPluginOptions(*command, options.plugin);
    addSetupOptions(*command, options.setup);
    command->footer("Without a display (DISPLAY), Xvfb is started temporarily.\n"
                    "Examples:\n"
                    "  zelvatone screenshot -o editor.png\n"
                    "  zelvatone screenshot -o organ.png --program Organ --set Attack=0.5\n"
                    "  zelvatone screenshot -o help.png --help-page 2");
    return command;
}

void runScreenshot(const ScreenshotOptions& options, const StandardOutput& output) {
    checkExtension(options.output);
    const std::optional<int> helpPage = helpPageOption(options.helpPage);
    const PluginSetup setup = readSetup(options.setup);
    const InterruptWatch watch;
    const PictureDisplay display;
    const PluginLibrary library = loadPlugin(options.plugin);
    HostedPlugin plugin(library, StreamFormat{});
    applySetup(plugin, setup);
    checkHelp(plugin, helpPage);
    const TrueColourPicture picture = takePicture(plugin, helpPage);
    writePng(userPath(options.output), picture);
    output.print(formatText("{}: {} x {} pixels\n", cleanText(options.output), picture.width,
                            picture.height));
}

} // namespace zelvatone
