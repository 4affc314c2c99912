// What one sound of a dataset is made of.
#pragma once

#include "dataset/DatasetPlan.h"
#include "params/ParameterTable.h"

#include <array>
#include <cstdint>

namespace zelvatone {

struct SoundRecipe {
    std::int64_t number = 0;
    bool isForTests = false; // one in ten, drawn
    int program = 0;
    int note = 0;
    int velocity = 0;
    std::array<float, kParameterCount> values{}; // units, by parameter index
};

// Depends on the plan's seed, choices and table and on the number alone: docs/dataset.md says how
// each part is drawn. `number` from 0 to the plan's count - 1. Any thread.
SoundRecipe recipeOf(const DatasetPlan& plan, std::int64_t number);

} // namespace zelvatone
