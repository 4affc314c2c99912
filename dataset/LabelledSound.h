// A sound with everything that is told about it.
#pragma once

#include "dataset/SoundRecipe.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

struct LabelledSound {
    SoundRecipe recipe;
    std::vector<char> file;          // the bytes of a sound file of one channel
    float peak = 0.0F;               // largest magnitude, 1.0 is full scale
    double loudness = 0.0;           // LUFS; -infinity where there is none
    bool isSilent = false;           // its peak is below -60 dBFS
    std::int64_t clippedSamples = 0; // beyond full scale: cut off in FLAC, kept in WAV
    std::int64_t brokenSamples = 0;  // NaN or infinite; silenced
};

// The samples that the instrument plays: its left output, which is the same as its right one. A
// new instrument each time. Any thread.
std::vector<float> renderSound(const DatasetPlan& plan, const SoundRecipe& recipe);

// Renders, measures and encodes. Any thread. Throws InputError without memory.
LabelledSound makeSound(const DatasetPlan& plan, std::int64_t number);

// One JSON object, with a line end.
std::string labelText(const DatasetPlan& plan, const LabelledSound& sound);

// The same as a line of comma-separated values, and the line that names the columns.
std::string tableLine(const DatasetPlan& plan, const LabelledSound& sound);
std::string tableHeading();

} // namespace zelvatone
