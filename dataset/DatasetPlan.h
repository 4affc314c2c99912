// What a dataset is: everything that its sounds depend on.
#pragma once

#include "dataset/SoundTable.h"
#include "host/text/Json.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone {

// A parameter and the values, in units, that it is drawn from; both ends belong to them.
struct ValueRange {
    ParameterIndex parameter;
    float low;
    float high;
};

struct DatasetPlan {
    std::int64_t count = 0;         // sounds
    std::uint64_t seed = 0;         // of everything that is drawn
    double seconds = 1.0;           // of each sound
    double holdSeconds = 0.75;      // from the start of the note to its end
    int sampleRate = 44100;         // Hz
    double tempo = 120.0;           // beats per minute
    bool isFlac = false;            // FLAC of 24 bits; otherwise WAV of floats
    std::int64_t perShard = 1;      // sounds in a shard; fewer in the last
    std::vector<int> programs;      // factory programs; one is drawn, and one of each list below
    std::vector<int> notes;         // 0 to 127
    std::vector<int> velocities;    // 1 to 127
    std::vector<ValueRange> ranges; // of the parameters that do not stay what the program says
    SoundTable table;               // overrides what is drawn, where it says something

    std::int64_t frames() const; // samples in each sound
    std::int64_t shards() const;
};

// Of a sound or a shard, in at least six digits: "000042".
std::string keyOf(std::int64_t number);

// Sounds in a shard of about 1 GB.
std::int64_t usualPerShard(const DatasetPlan& plan);

// All of the plan but the table's content, which planOf() leaves empty.
Json planJson(const DatasetPlan& plan);
// Throws InputError for JSON that is not of planJson().
DatasetPlan planOf(const Json& json);

} // namespace zelvatone
