#include "dataset/DatasetRun.h"

#include "dataset/FreedMemory.h"
#include "dataset/Sha256.h"
#include "host/Error.h"
#include "host/files/DiskSpace.h"
#include "host/files/FileBytes.h"
#include "host/files/OutputFile.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <algorithm>
#include <vector>

namespace zelvatone {

namespace {

std::vector<std::int64_t> shardsOf(const DatasetPlan& plan, const ShardShare& share) {
    std::vector<std::int64_t> shards;
    for (std::int64_t shard = share.part - 1; shard < plan.shards(); shard += share.parts) {
        shards.push_back(shard);
    }
    return shards;
}

std::vector<FoundShard> findShards(const DatasetPlan& plan, const DatasetFolder& folder,
                                   const std::vector<std::int64_t>& shards, bool readsAll,
                                   ThreadTeam& team) {
    std::vector<FoundShard> found(shards.size());
    team.run(static_cast<int>(shards.size()), [&](int i) {
        InterruptWatch::check();
        const auto at = static_cast<std::size_t>(i);
        found[at] = findShard(plan, folder, shards[at], readsAll);
    });
    return found;
}

std::int64_t soundsIn(const DatasetPlan& plan, std::int64_t shard) {
    return std::min(plan.perShard, plan.count - shard * plan.perShard);
}

// What FLAC will take is not known, and WAV files have little beside their samples.
void checkSpace(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t sounds) {
    if (!plan.isFlac) {
        constexpr std::int64_t kSampleBytes = 4;
        checkDiskSpace({{folder.manifest(), sounds * plan.frames() * kSampleBytes}});
    }
}

void addCounts(DatasetResult& result, const ShardRecord& record) {
    result.silent += record.silent;
    result.clipped += record.clipped;
}

// The tables of all shards under one heading. Returns the checksum.
std::string writeParameters(const DatasetPlan& plan, const DatasetFolder& folder) {
    constexpr std::size_t kLargest = std::size_t{1} << 31U;
    OutputFile file(folder.parameters());
    Sha256 sum;
    const auto write = [&](std::string_view text) {
        sum.add({text.data(), text.size()});
        file.write(text.data(), static_cast<std::int64_t>(text.size()));
    };
    write(tableHeading());
    for (std::int64_t shard = 0; shard < plan.shards(); ++shard) {
        InterruptWatch::check();
        const auto bytes = readBytes(folder.labels(keyOf(shard)), kLargest, "table of labels");
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        write(text.substr(text.find('\n') + 1));
    }
    file.commit();
    return sum.take();
}

Json manifestOf(const DatasetPlan& plan, const DatasetFolder& folder,
                const std::vector<FoundShard>& found, const std::string& parametersSha256) {
    Json shards = Json::array();
    Json counts{{"sounds", plan.count}, {"for_tests", 0}, {"silent", 0},
                {"clipped", 0},         {"broken", 0},    {"bytes", 0}};
    for (const FoundShard& shard : found) {
        const Json json = shardJson(shard.record);
        for (const char* count : {"for_tests", "silent", "clipped", "broken", "bytes"}) {
            counts[count] = counts[count].get<std::int64_t>() + json.at(count).get<std::int64_t>();
        }
        shards.push_back(json);
    }
    Json manifest = folder.description();
    manifest["counts"] = counts;
    manifest["parameters_sha256"] = parametersSha256;
    manifest["shards"] = shards;
    return manifest;
}

std::vector<std::int64_t> allShards(const DatasetPlan& plan) {
    return shardsOf(plan, ShardShare{});
}

std::int64_t countMissing(const std::vector<FoundShard>& found) {
    return std::count_if(found.begin(), found.end(), [](const FoundShard& shard) {
        return shard.state != ShardState::kFinished;
    });
}

} // namespace

DatasetResult makeDataset(const DatasetPlan& plan, const DatasetFolder& folder,
                          const ShardShare& share, int threads, const DatasetWatch& watch) {
    keepFreedMemory();
    ThreadTeam team(threads);
    const std::vector<std::int64_t> shards = shardsOf(plan, share);
    const std::vector<FoundShard> before = findShards(plan, folder, shards, true, team);
    DatasetResult result;
    std::int64_t all = 0;
    for (std::size_t i = 0; i < shards.size(); ++i) {
        if (before[i].state == ShardState::kFinished) {
            ++result.keptShards;
            continue;
        }
        all += soundsIn(plan, shards[i]);
        if (before[i].state == ShardState::kDamaged) {
            watch.notice(formatText("{} is damaged and made again",
                                    folder.archive(keyOf(shards[i])).string()));
        }
    }
    checkSpace(plan, folder, all);
    for (std::size_t i = 0; i < shards.size(); ++i) {
        if (before[i].state != ShardState::kFinished) {
            makeShard(plan, folder, shards[i], team,
                      [&] { watch.progress(++result.madeSounds, all); });
        }
    }
    const auto found = findShards(plan, folder, allShards(plan), false, team);
    result.missingShards = countMissing(found);
    for (const FoundShard& shard : found) {
        addCounts(result, shard.record);
    }
    if (result.missingShards == 0) {
        const std::string sum = writeParameters(plan, folder);
        writeWhole(folder.manifest(), jsonText(manifestOf(plan, folder, found, sum)));
    }
    return result;
}

} // namespace zelvatone
