#include "tour/TourData.h"

#include "host/text/Json.h"
#include "tour/Character.h"
#include "tour/StopCard.h"
#include "tour/StopFiles.h"
#include "tour/TourPage.h"

#include <cmath>

namespace zelvatone {

namespace {

// To so many digits after the point: what is left of it differs between compilers. Null for
// silence, whose decibels are infinite.
Json rounded(double number, int digits) {
    if (!std::isfinite(number)) {
        return nullptr;
    }
    const double scale = std::pow(10.0, digits);
    const double result = std::round(number * scale) / scale;
    return result == 0.0 ? 0.0 : result; // no minus before zero
}

Json measuresJson(const NoteMeasures& measures) {
    return {{"riseSeconds", rounded(measures.riseSeconds, 2)},
            {"fallSeconds", rounded(measures.fallSeconds, 2)},
            {"ringSeconds", rounded(measures.ringSeconds, 2)},
            {"sunkDecibels", rounded(measures.sunkDecibels, 1)},
            {"lowShare", rounded(measures.lowShare, 3)},
            {"highShare", rounded(measures.highShare, 3)},
            {"strongestShare", rounded(measures.strongestShare, 3)},
            {"metallicShare", rounded(measures.metallicShare, 3)},
            {"strongestHz", rounded(measures.strongestHz, 0)},
            {"secondDecibels", rounded(measures.secondDecibels, 1)},
            {"thirdDecibels", rounded(measures.thirdDecibels, 1)},
            {"tonalShare", rounded(measures.tonalShare, 3)},
            {"sweepOctaves", rounded(measures.sweepOctaves, 2)},
            {"pulsesPerSecond", rounded(measures.pulsesPerSecond, 1)}};
}

Json filesJson(const TourStop& stop) {
    const StopFiles files(stop.file);
    return {{"ogg", files.ogg},
            {"flac", files.flac},
            {"preset", files.preset},
            {"spectrum", files.spectrum},
            {"wave", files.wave}};
}

Json stopJson(const TourStop& stop, const std::string& plugin) {
    return {{"number", stop.number},
            {"name", stop.name},
            {"tags", charactersOf(stop.measures)},
            {"description", descriptionOf(stop.measures)},
            {"peakDecibels", rounded(stop.peakDecibels, 2)},
            {"dcOffset", rounded(stop.dcOffset, 3)},
            {"lufs", rounded(stop.loudness.lufs, 1)},
            {"gainDecibels", rounded(stop.gainDecibels, 1)},
            {"measures", measuresJson(stop.measures)},
            {"command", renderCommand(stop, plugin)},
            {"files", filesJson(stop)}};
}

} // namespace

std::string tourData(const Tour& tour) {
    Json json{{"instrument", tour.instrument},
              {"phraseSeconds", tour.phraseSeconds},
              {"tags", Json::array()},
              {"programs", Json::array()}};
    for (const CharacterTag& tag : characterTags()) {
        json["tags"].push_back({{"name", tag.name}, {"rule", tag.rule}});
    }
    for (const TourStop& stop : tour.stops) {
        json["programs"].push_back(stopJson(stop, tour.plugin));
    }
    return jsonText(json);
}

} // namespace zelvatone
