#include "dataset/DatasetRun.h"
#include "dataset/FreedMemory.h"
#include "dataset/Sha256.h"
#include "dataset/TarArchive.h"
#include "host/Error.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace zelvatone {

namespace {

constexpr std::size_t kBatch = 256; // sounds in memory at once

// Compares the sounds of archives with new renderings.
class SoundCheck {
public:
    SoundCheck(const DatasetPlan& plan, std::int64_t sounds, int threads, const DatasetWatch& watch)
        : plan_(plan), sounds_(std::min(sounds, plan.count)), team_(threads), watch_(watch) {}

    void check(const std::filesystem::path& archive, const ShardRecord& record) {
        std::int64_t files = 0;
        readTar(archive, [&](const std::string& name, std::span<const char> bytes) {
            const std::int64_t number = record.first + files / 2;
            const bool isLabel = files % 2 == 1;
            ++files;
            const char* ending = isLabel ? ".json" : (plan_.isFlac ? ".flac" : ".wav");
            if (name != keyOf(number) + ending) {
                throw InputError(formatText("{} holds {} in place of {}{}", archive.string(), name,
                                            keyOf(number), ending));
            }
            if (isChosen(number)) {
                keep(number, isLabel, bytes);
            }
            if (isLabel && kept_.size() >= kBatch) {
                compare(archive);
            }
        });
        if (files != 2 * record.sounds) {
            throw InputError(formatText("{} holds {} files in place of {}", archive.string(), files,
                                        2 * record.sounds));
        }
        compare(archive);
    }

private:
    struct Kept {
        std::int64_t number;
        std::vector<char> file;
        std::string label;
    };

    // The sounds at i * count / sounds_, for i from 0.
    bool isChosen(std::int64_t number) const {
        const std::int64_t i = (number * sounds_ + plan_.count - 1) / plan_.count;
        return i < sounds_ && i * plan_.count / sounds_ == number;
    }

    void keep(std::int64_t number, bool isLabel, std::span<const char> bytes) {
        if (isLabel) {
            kept_.back().label.assign(bytes.begin(), bytes.end());
        } else {
            kept_.push_back({number, {bytes.begin(), bytes.end()}, {}});
        }
    }

    void compare(const std::filesystem::path& archive) {
        const auto atOnce = static_cast<std::size_t>(soundsAtOnce(plan_));
        team_.run(static_cast<int>((kept_.size() + atOnce - 1) / atOnce), [&](int i) {
            InterruptWatch::check();
            const std::size_t first = static_cast<std::size_t>(i) * atOnce;
            compareSome(archive,
                        std::span(kept_).subspan(first, std::min(atOnce, kept_.size() - first)));
        });
        done_ += static_cast<std::int64_t>(kept_.size());
        kept_.clear();
        watch_.progress(done_, sounds_);
    }

    void compareSome(const std::filesystem::path& archive, std::span<const Kept> kept) const {
        std::vector<std::int64_t> numbers;
        for (const Kept& sound : kept) {
            numbers.push_back(sound.number);
        }
        const std::vector<LabelledSound> sounds = makeSounds(plan_, numbers);
        for (std::size_t i = 0; i < sounds.size(); ++i) {
            if (sounds[i].file != kept[i].file || labelText(plan_, sounds[i]) != kept[i].label) {
                throw InputError(formatText("sound {} in {} is not what this program renders",
                                            numbers[i], archive.string()));
            }
        }
    }

    const DatasetPlan& plan_;
    std::int64_t sounds_;
    ThreadTeam team_;
    const DatasetWatch& watch_;
    std::vector<Kept> kept_;
    std::int64_t done_ = 0;
};

std::vector<ShardRecord> recordsOf(const DatasetPlan& plan, const DatasetFolder& folder,
                                   int threads) {
    std::vector<FoundShard> found(static_cast<std::size_t>(plan.shards()));
    ThreadTeam team(threads);
    team.run(static_cast<int>(plan.shards()),
             [&](int i) { found[static_cast<std::size_t>(i)] = findShard(plan, folder, i, true); });
    std::vector<ShardRecord> records;
    for (const FoundShard& shard : found) {
        const auto number = static_cast<std::int64_t>(records.size());
        if (shard.state != ShardState::kFinished) {
            throw InputError(
                formatText("{} is {}; the command that made the dataset makes it again",
                           folder.archive(keyOf(number)).string(),
                           shard.state == ShardState::kMissing ? "missing" : "damaged"));
        }
        records.push_back(shard.record);
    }
    return records;
}

// Whether the manifest names the same checksums.
void checkManifest(const DatasetFolder& folder, const std::vector<ShardRecord>& records) {
    const Json manifest = readJson(folder.manifest());
    Json shards = Json::array();
    for (const ShardRecord& record : records) {
        shards.push_back(shardJson(record));
    }
    if (!manifest.contains("shards") || manifest.at("shards") != shards) {
        throw InputError(formatText("{} does not list the shards", folder.manifest().string()));
    }
    if (!manifest.contains("parameters_sha256") ||
        manifest.at("parameters_sha256") != sha256Of(folder.parameters())) {
        throw InputError(
            formatText("{} is damaged; the command that made the dataset makes it again",
                       folder.parameters().string()));
    }
}

} // namespace

void verifyDataset(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t sounds,
                   int threads, const DatasetWatch& watch) {
    keepFreedMemory();
    const std::vector<ShardRecord> records = recordsOf(plan, folder, threads);
    checkManifest(folder, records);
    SoundCheck check(plan, sounds, threads, watch);
    for (const ShardRecord& record : records) {
        check.check(folder.archive(keyOf(record.number)), record);
    }
}

} // namespace zelvatone
