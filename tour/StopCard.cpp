#include "tour/StopCard.h"

#include "host/text/Format.h"
#include "host/text/ShellWord.h"
#include "tour/Character.h"
#include "tour/PageParts.h"
#include "tour/PageText.h"
#include "tour/Spectrogram.h"
#include "tour/StopFiles.h"
#include "tour/TourPage.h"

#include <array>
#include <cmath>

namespace zelvatone {

namespace {

std::string frequencyAxis() {
    struct Mark {
        double hz;
        const char* label;
    };
    static constexpr std::array kMarks{Mark{100.0, "100 Hz"}, Mark{1000.0, "1 kHz"},
                                       Mark{10000.0, "10 kHz"}};
    std::string text;
    for (const Mark& mark : kMarks) {
        text += formatText(R"(<i style="bottom:{}"><b>{}</b></i>)", percentText(heightOf(mark.hz)),
                           mark.label);
    }
    return text;
}

std::string timeAxis(double seconds) {
    std::string text;
    for (int second = 0; second <= static_cast<int>(seconds); ++second) {
        text += formatText(R"(<i style="left:{}">{}{}</i>)", percentText(second / seconds), second,
                           second == 0 ? " s" : "");
    }
    return text;
}

std::string parameterLines(const std::vector<ParameterRow>& rows) {
    std::string text;
    for (const ParameterRow& row : rows) {
        text += formatText("<div><dt>{}</dt><dd>{}</dd></div>\n", htmlText(row.name),
                           htmlText(row.display));
    }
    return text;
}

std::string levelText(const TourStop& stop) {
    std::string text = "silent";
    if (std::isfinite(stop.peakDecibels)) {
        text = formatText("peak {} dB · {} LUFS · DC {}", signedText(stop.peakDecibels, 1, "+"),
                          signedText(stop.loudness.lufs, 1), signedText(stop.dcOffset, 2, "+"));
    }
    if (stop.brokenSamples != 0) {
        text += formatText(" · {} samples were NaN or infinite", stop.brokenSamples);
    }
    return text;
}

std::string tagItems(const std::vector<std::string>& tags) {
    std::string text;
    for (const std::string& tag : tags) {
        text += formatText("<li>{}</li>", tag);
    }
    return text;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

// What stands under the tags: the description without them.
std::string factsOf(const TourStop& stop) {
    const std::string description = descriptionOf(stop.measures);
    const std::size_t end = description.find(". ");
    return end == std::string::npos ? description : description.substr(end + 2);
}

} // namespace

std::string renderCommand(const TourStop& stop, const std::string& plugin) {
    return formatText("zelvatone render song.mid -o {}.wav --program {}{}", stop.file,
                      shellWord(stop.name), plugin.empty() ? "" : " --plugin " + shellWord(plugin));
}

std::string keysLink(const TourStop& stop, const std::string& keys) {
    if (keys.empty()) {
        return "";
    }
    return formatText(
        "<a href=\"{}#program={}\" aria-label=\"Play {} on the keys\">On the keys</a>\n",
        htmlText(keys), stop.number, htmlText(stop.name));
}

std::string stopCard(const TourStop& stop, const Tour& tour) {
    const StopFiles files(stop.file);
    const std::vector<std::string> tags = charactersOf(stop.measures);
    return filled(pageparts::kStop, {{"number", std::to_string(stop.number)},
                                     {"name", htmlText(stop.name)},
                                     {"file", stop.file},
                                     {"tagwords", joined(tags)},
                                     {"tags", tagItems(tags)},
                                     {"facts", htmlText(factsOf(stop))},
                                     {"levels", levelText(stop)},
                                     {"ogg", files.ogg},
                                     {"flac", files.flac},
                                     {"preset", files.preset},
                                     {"spectrum", files.spectrum},
                                     {"wave", files.wave},
                                     {"keys", keysLink(stop, tour.keys)},
                                     {"command", htmlText(renderCommand(stop, tour.plugin))},
                                     {"frequencies", frequencyAxis()},
                                     {"times", timeAxis(tour.phraseSeconds)},
                                     {"seconds", formatText("{:.0f}", tour.phraseSeconds)},
                                     {"count", std::to_string(stop.parameters.size())},
                                     {"parameters", parameterLines(stop.parameters)}});
}

std::string indexLine(const TourStop& stop) {
    return formatText("<li><a href=\"#{}\"><span class=\"number\">{}</span> {}</a></li>\n",
                      stop.file, stop.number, htmlText(stop.name));
}

} // namespace zelvatone
