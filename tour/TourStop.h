// One program on the tour: how it sounds and what there is to know about it.
#pragma once

#include "host/midi/Song.h"
#include "host/plugin/ParameterRows.h"
#include "host/plugin/PluginLibrary.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone {

constexpr double kTourRate = 44100.0; // Hz

struct TourStop {
    int number = 0; // of the program
    std::string name;
    std::string file; // name of its files, without extension: "07-Cyborg-Pad"
    std::vector<ParameterRow> parameters;
    double peakDecibels = 0.0;      // as the plug-in plays it; full scale is 0
    std::int64_t brokenSamples = 0; // NaN or infinite; silenced
};

// A rendered phrase, all as loud as each other at their peaks.
struct TourSound {
    int channels = 0;
    std::vector<float> samples; // channels interleaved
};

// Plays the song with one program. Throws Interrupted when the user stops it.
void renderStop(const PluginLibrary& library, const Song& song, TourStop& stop, TourSound& sound);

// Writes the sound and both pictures of a stop into `folder`. Throws InputError.
class Spectrogram;
void writeStop(const std::filesystem::path& folder, const TourStop& stop, const TourSound& sound,
               const Spectrogram& spectrogram);

// "07-Cyborg-Pad", by fileName(): the number has as many digits as the last of `count` programs.
std::string stopFile(int number, int count, const std::string& name);

} // namespace zelvatone
