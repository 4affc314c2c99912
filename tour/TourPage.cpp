#include "tour/TourPage.h"

#include "host/text/Format.h"
#include "tour/LevelColours.h"
#include "tour/PageParts.h"
#include "tour/Spectrogram.h"

#include <array>
#include <cmath>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace zelvatone {

namespace {

using Values = std::vector<std::pair<std::string, std::string>>;

// The part with "{{name}}" replaced by each value. Values are not looked through again.
std::string filled(std::string_view part, const Values& values) {
    std::string text;
    while (true) {
        const std::size_t open = part.find("{{");
        const std::size_t close = part.find("}}", open);
        if (open == std::string_view::npos || close == std::string_view::npos) {
            return text + std::string(part);
        }
        text += part.substr(0, open);
        const std::string_view name = part.substr(open + 2, close - open - 2);
        for (const auto& [key, value] : values) {
            text += key == name ? value : "";
        }
        part.remove_prefix(close + 2);
    }
}

std::string percent(double part) {
    return formatText("{:.2f}%", part * 100.0);
}

std::string frequencyAxis() {
    struct Mark {
        double hz;
        const char* label;
    };
    static constexpr std::array kMarks{Mark{100.0, "100 Hz"}, Mark{1000.0, "1 kHz"},
                                       Mark{10000.0, "10 kHz"}};
    std::string text;
    for (const Mark& mark : kMarks) {
        text += formatText(R"(<i style="bottom:{}"><b>{}</b></i>)", percent(heightOf(mark.hz)),
                           mark.label);
    }
    return text;
}

std::string timeAxis(double seconds) {
    std::string text;
    for (int second = 0; second <= static_cast<int>(seconds); ++second) {
        text += formatText(R"(<i style="left:{}">{}{}</i>)", percent(second / seconds), second,
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

// With that many digits after the point, a minus of a number's width, and no minus for zero.
std::string decibelText(double decibels, int digits) {
    const std::string number = formatText("{:.{}f}", std::abs(decibels), digits);
    const bool isZero = number.find_first_not_of("0.") == std::string::npos;
    return formatText("{}{} dB", decibels < 0.0 && !isZero ? "\u2212" : "", number);
}

std::string peakText(const TourStop& stop) {
    std::string text = std::isfinite(stop.peakDecibels)
                           ? formatText("peak {}", decibelText(stop.peakDecibels, 1))
                           : "silent";
    if (stop.brokenSamples != 0) {
        text += formatText(", {} samples were NaN or infinite", stop.brokenSamples);
    }
    return text;
}

std::string stopText(const TourStop& stop, double phraseSeconds) {
    return filled(pageparts::kStop, {{"number", std::to_string(stop.number)},
                                     {"name", htmlText(stop.name)},
                                     {"file", stop.file},
                                     {"peak", peakText(stop)},
                                     {"frequencies", frequencyAxis()},
                                     {"times", timeAxis(phraseSeconds)},
                                     {"count", std::to_string(stop.parameters.size())},
                                     {"parameters", parameterLines(stop.parameters)}});
}

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

constexpr const char* kMark = R"(<meta name="generator" content="zelvatone tour">)";

} // namespace

std::string htmlText(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string tourPage(const std::string& instrument, double phraseSeconds,
                     const std::vector<TourStop>& stops) {
    std::string list;
    for (const TourStop& stop : stops) {
        list += stopText(stop, phraseSeconds);
    }
    return filled(pageparts::kPage, {{"mark", kMark},
                                     {"instrument", htmlText(instrument)},
                                     {"count", std::to_string(stops.size())},
                                     {"gradient", gradient()},
                                     {"faintest", decibelText(kFaintestDecibels, 0)},
                                     {"loudest", decibelText(kLoudestDecibels, 0)},
                                     {"seconds", formatText("{:.0f}", phraseSeconds)},
                                     {"style", std::string(pageparts::kStyle)},
                                     {"script", std::string(pageparts::kScript)},
                                     {"stops", list}});
}

bool holdsOnlyATour(const std::filesystem::path& folder) {
    std::error_code error; // a folder that cannot be read is not a tour
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const std::string extension = entry.path().extension().string();
        const bool isOurs =
            entry.path().filename() == "index.html" || extension == ".ogg" || extension == ".png";
        if (!entry.is_regular_file(error) || !isOurs) {
            return false;
        }
    }
    std::ostringstream page;
    page << std::ifstream(folder / "index.html", std::ios::binary).rdbuf();
    return page.str().find(kMark) != std::string::npos;
}

} // namespace zelvatone
