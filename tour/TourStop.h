// One program on the tour: how it sounds and what there is to know about it.
#pragma once

#include "host/midi/Song.h"
#include "host/plugin/ParameterRows.h"
#include "host/plugin/PluginLibrary.h"
#include "host/preset/Preset.h"
#include "tour/Loudness.h"
#include "tour/NoteMeasures.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone {

constexpr int kTourRate = 44100; // Hz
// What EBU R 128 levels programmes to, and the highest true peak that it allows.
constexpr double kTourLufs = -23.0;
constexpr double kTourPeakDecibels = -1.0;

struct TourStop {
    int number = 0; // of the program
    std::string name;
    std::string file; // name of its files, without extension: "07-Cyborg-Pad"
    std::vector<ParameterRow> parameters;
    Preset preset;

    // Of the phrase as the plug-in plays it; full scale is 1 or 0 dB.
    double peakDecibels = 0.0;
    double dcOffset = 0.0;          // the mean over the phrase, of the channel that has most
    std::int64_t brokenSamples = 0; // NaN or infinite; silenced
    // Of the phrase without its DC.
    Loudness loudness;
    double gainDecibels = 0.0; // that levels it

    NoteMeasures measures;
};

// The rendered phrase without its DC, as loud as all others.
struct TourSound {
    int channels = 0;
    std::vector<float> samples; // channels interleaved
};

// Plays the phrase and the measured note with one program. Throws Interrupted when the user stops
// it.
void renderStop(const PluginLibrary& library, const Song& phrase, const NoteMeter& meter,
                TourStop& stop, TourSound& sound);

// The mean of all channels.
std::vector<float> monoOf(const TourSound& sound);

// "07-Cyborg-Pad", by fileName(): the number has as many digits as the last of `count` programs.
std::string stopFile(int number, int count, const std::string& name);

} // namespace zelvatone
