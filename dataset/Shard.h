// One archive of a dataset with its labels.
#pragma once

#include "dataset/DatasetFolder.h"
#include "dataset/LabelledSound.h"
#include "host/threads/ThreadTeam.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace zelvatone {

// What is known about a finished shard.
struct ShardRecord {
    std::int64_t number = 0;
    std::int64_t first = 0; // sound
    std::int64_t sounds = 0;
    std::int64_t bytes = 0; // of the archive
    std::string sha256;     // of the archive
    std::string labelsSha256;
    std::int64_t forTests = 0; // sounds
    std::int64_t silent = 0;
    std::int64_t clipped = 0;
    std::int64_t broken = 0;
};

Json shardJson(const ShardRecord& record);

// Called from several threads, one at a time, when a sound has been written.
using SoundDone = std::function<void()>;

// Renders the sounds of a shard on the team and writes its archive, its labels and, last of all,
// its record. The bytes are the same for every number of threads. Throws InputError; Interrupted.
ShardRecord makeShard(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t number,
                      ThreadTeam& team, const SoundDone& done);

enum class ShardState { kMissing, kDamaged, kFinished };

struct FoundShard {
    ShardState state = ShardState::kMissing;
    ShardRecord record; // of a finished one
};

// Looks at the files of a shard; all their bytes with `readsAll`, otherwise their sizes. Throws
// Interrupted.
FoundShard findShard(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t number,
                     bool readsAll);

} // namespace zelvatone
