// Makes datasets, puts their parts together and checks them.
#pragma once

#include "dataset/PlanText.h"
#include "dataset/Shard.h"

#include <cstdint>
#include <functional>
#include <string>

namespace zelvatone {

struct DatasetWatch {
    // Called with the sounds that are done and that there are to do, one at a time.
    std::function<void(std::int64_t done, std::int64_t all)> progress;
    // Called with a line about something that is not as it should be and is mended.
    std::function<void(const std::string& line)> notice;
};

struct DatasetResult {
    std::int64_t madeSounds = 0;    // in this run
    std::int64_t keptShards = 0;    // finished before
    std::int64_t missingShards = 0; // of other shares
    std::int64_t silent = 0;        // of all shards that are there
    std::int64_t clipped = 0;
};

// Makes the shards of a share that are missing or damaged. When no shard of the whole dataset is
// missing afterwards, writes parameters.csv and manifest.json. `folder` is prepared. Throws
// InputError; Interrupted, with whole shards left only.
DatasetResult makeDataset(const DatasetPlan& plan, const DatasetFolder& folder,
                          const ShardShare& share, int threads, const DatasetWatch& watch);

// Checks every file's checksum and renders `sounds` sounds again, spread over the whole dataset.
// `folder` is open. Throws InputError for the first difference; Interrupted.
void verifyDataset(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t sounds,
                   int threads, const DatasetWatch& watch);

} // namespace zelvatone
