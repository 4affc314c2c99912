// The files of one program on the tour.
#pragma once

#include "tour/Spectrogram.h"
#include "tour/TourStop.h"

#include <filesystem>
#include <string>

namespace zelvatone {

// By name, without the folder.
struct StopFiles {
    explicit StopFiles(const std::string& stopFile)
        : ogg(stopFile + ".ogg"),
          flac(stopFile + ".flac"),
          preset(stopFile + ".fxp"),
          spectrum(stopFile + "-spectrum.png"),
          wave(stopFile + "-wave.png") {}

    std::string ogg;
    std::string flac; // the same sound, for browsers that do not play Vorbis
    std::string preset;
    std::string spectrum;
    std::string wave;
};

// Writes them into `folder`. Throws InputError, and Interrupted when the user stops it.
void writeStop(const std::filesystem::path& folder, const TourStop& stop, const TourSound& sound,
               const Spectrogram& spectrogram);

} // namespace zelvatone
