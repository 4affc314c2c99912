#include "tour/TourPage.h"

#include "host/text/Format.h"
#include "tour/Character.h"
#include "tour/LevelColours.h"
#include "tour/PageParts.h"
#include "tour/PageText.h"
#include "tour/Spectrogram.h"
#include "tour/StopCard.h"
#include "tour/TourData.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

namespace zelvatone {

namespace {

constexpr const char* kMark = R"(<meta name="generator" content="zelvatone tour">)";
constexpr const char* kPageFile = "index.html";
constexpr const char* kDataFile = "programs.json";
constexpr const char* kStyleFile = "style.css";
constexpr const char* kScriptFile = "script.js";

// The colours of the spectrograms as a scale.
std::string gradient() {
    constexpr std::size_t kStep = 15; // 18 places, between which the page's own blend is as good
    std::string text = "linear-gradient(90deg";
    const auto colours = levelColours();
    for (std::size_t i = 0; i < colours.size(); i += kStep) {
        text += formatText(",rgb({} {} {})", colours[i][0], colours[i][1], colours[i][2]);
    }
    return text + ")";
}

std::int64_t countOf(std::string_view tag, const std::vector<TourStop>& stops) {
    return std::ranges::count_if(stops, [&](const TourStop& stop) {
        return std::ranges::count(charactersOf(stop.measures), tag) != 0;
    });
}

// A button for each tag that some programs have.
std::string chips(const std::vector<TourStop>& stops) {
    std::string text;
    for (const CharacterTag& tag : characterTags()) {
        if (const auto count = countOf(tag.name, stops); count != 0) {
            text += formatText("<button type=\"button\" aria-pressed=\"false\" data-tag=\"{0}\" "
                               "title=\"{1}\">{0} <span>{2}</span></button>\n",
                               tag.name, htmlText(tag.rule), count);
        }
    }
    return text;
}

std::string rules() {
    std::string text;
    for (const CharacterTag& tag : characterTags()) {
        text += formatText("<div><dt>{}</dt><dd>{}</dd></div>\n", tag.name, htmlText(tag.rule));
    }
    return text;
}

std::string page(const Tour& tour, const std::string& style, const std::string& script) {
    std::string cards;
    std::string index;
    for (const TourStop& stop : tour.stops) {
        cards += stopCard(stop, tour);
        index += indexLine(stop);
    }
    return filled(pageparts::kPage, {{"mark", kMark},
                                     {"instrument", htmlText(tour.instrument)},
                                     {"count", std::to_string(tour.stops.size())},
                                     {"chips", chips(tour.stops)},
                                     {"rules", rules()},
                                     {"index", index},
                                     {"gradient", gradient()},
                                     {"lufs", signedText(kTourLufs, 0)},
                                     {"faintest", signedText(kFaintestDecibels, 0) + " dB"},
                                     {"loudest", signedText(kLoudestDecibels, 0) + " dB"},
                                     {"seconds", formatText("{:.0f}", tour.phraseSeconds)},
                                     {"style", style},
                                     {"script", script},
                                     {"stops", cards}});
}

// Whether the page names such a file of a stop, in quotes as its links do.
bool isNamedBy(const std::string& page, const std::string& file) {
    return page.find("\"" + file + "\"") != std::string::npos;
}

} // namespace

TourTexts tourTexts(const Tour& tour) {
    return {{kPageFile, page(tour, formatText("<style>\n{}</style>", pageparts::kStyle),
                             formatText("<script>\n{}</script>", pageparts::kScript))},
            {kDataFile, tourData(tour)}};
}

TourTexts siteTexts(const Tour& tour) {
    Tour published = tour;
    published.plugin = std::filesystem::path(tour.plugin).filename().string();
    const std::string style = formatText(R"(<link rel="stylesheet" href="{}">)", kStyleFile);
    const std::string script = formatText(R"(<script src="{}"></script>)", kScriptFile);
    return {{kPageFile, page(published, style, script)},
            {kDataFile, tourData(published)},
            {kStyleFile, std::string(pageparts::kStyle)},
            {kScriptFile, std::string(pageparts::kScript)}};
}

bool holdsOnlyATour(const std::filesystem::path& folder) {
    std::ostringstream stream;
    stream << std::ifstream(folder / kPageFile, std::ios::binary).rdbuf();
    const std::string page = stream.str();
    if (page.find(kMark) == std::string::npos) {
        return false;
    }
    constexpr std::array kOurs{kPageFile, kDataFile, kStyleFile, kScriptFile};
    std::error_code error; // a folder that cannot be read is not a tour
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        const bool isOurs = std::ranges::count(kOurs, name) != 0 || isNamedBy(page, name);
        if (!entry.is_regular_file(error) || !isOurs) {
            return false;
        }
    }
    return !error;
}

} // namespace zelvatone
