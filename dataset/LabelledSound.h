// A sound with everything that is told about it.
#pragma once

#include "dataset/SoundLevel.h"
#include "dataset/SoundRecipe.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

struct LabelledSound {
    SoundRecipe recipe;
    std::vector<char> file; // the bytes of a sound file of one channel
    SoundLevel level;       // clipped samples are cut off in FLAC, kept in WAV
    double loudness = 0.0;  // LUFS; -infinity where there is none
    bool isSilent = false;  // its peak is below -60 dBFS
};

// The samples that the instrument plays: its left output, which is the same as its right one. A
// new instrument each time. Any thread.
std::vector<float> renderSound(const DatasetPlan& plan, const SoundRecipe& recipe);

// Renders, measures and encodes. Each sound is what it is alone; several take less time, as many as
// soundsAtOnce() says. Any thread.
std::vector<LabelledSound> makeSounds(const DatasetPlan& plan,
                                      std::span<const std::int64_t> numbers);
LabelledSound makeSound(const DatasetPlan& plan, std::int64_t number);

// Few enough to lie in memory.
int soundsAtOnce(const DatasetPlan& plan);

// One JSON object, with a line end.
std::string labelText(const DatasetPlan& plan, const LabelledSound& sound);

// The same as a line of comma-separated values, and the line that names the columns.
std::string tableLine(const DatasetPlan& plan, const LabelledSound& sound);
std::string tableHeading();

} // namespace zelvatone
