#include "dataset/Shard.h"

#include "dataset/Sha256.h"
#include "dataset/TarArchive.h"
#include "host/Error.h"
#include "host/files/OutputFile.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <numeric>
#include <system_error>
#include <utility>
#include <vector>

namespace zelvatone {

namespace {

// Sounds that the threads share out before they wait for each other: enough that the wait at the
// end is short beside the work, and few enough to lie in memory.
constexpr std::int64_t kBatch = 512;

// Writes sounds in order, whatever the order in which they come.
class ShardWriter {
public:
    ShardWriter(const DatasetPlan& plan, const DatasetFolder& folder, const ShardRecord& record,
                const SoundDone& done)
        : plan_(plan),
          record_(record),
          done_(done),
          archive_(folder.archive(keyOf(record.number))),
          tar_(archive_, archiveSum_),
          labels_(folder.labels(keyOf(record.number))) {
        writeLabels(tableHeading());
    }

    // Any thread. Each of the shard's sounds once.
    void put(std::vector<LabelledSound> sounds) {
        std::vector<Waiting> labelled;
        for (LabelledSound& sound : sounds) {
            std::string label = labelText(plan_, sound);
            labelled.push_back({std::move(sound), std::move(label)});
        }
        const std::scoped_lock lock(mutex_);
        std::move(labelled.begin(), labelled.end(), std::back_inserter(waiting_));
        while (writeNext()) {
        }
    }

    // After all sounds.
    ShardRecord finish() {
        tar_.finish();
        labels_.check();
        record_.bytes = archive_.size();
        record_.sha256 = archiveSum_.take();
        record_.labelsSha256 = labelsSum_.take();
        archive_.commit();
        labels_.commit();
        return record_;
    }

private:
    struct Waiting {
        LabelledSound sound;
        std::string label;
    };

    bool writeNext() {
        const auto next =
            std::find_if(waiting_.begin(), waiting_.end(), [this](const Waiting& waiting) {
                return waiting.sound.recipe.number == record_.first + written_;
            });
        if (next == waiting_.end()) {
            return false;
        }
        const Waiting now = std::move(*next);
        *next = std::move(waiting_.back());
        waiting_.pop_back();
        write(now);
        ++written_;
        done_();
        return true;
    }

    void write(const Waiting& now) {
        const std::string key = keyOf(now.sound.recipe.number);
        tar_.add(key + (plan_.isFlac ? ".flac" : ".wav"), now.sound.file);
        tar_.add(key + ".json", now.label);
        writeLabels(tableLine(plan_, now.sound));
        record_.forTests += now.sound.recipe.isForTests ? 1 : 0;
        record_.silent += now.sound.isSilent ? 1 : 0;
        record_.clipped += now.sound.level.clippedSamples > 0 ? 1 : 0;
        record_.broken += now.sound.level.brokenSamples > 0 ? 1 : 0;
    }

    void writeLabels(const std::string& line) {
        labelsSum_.add(line);
        labels_.write(line.data(), static_cast<std::int64_t>(line.size()));
    }

    const DatasetPlan& plan_;
    ShardRecord record_;
    const SoundDone& done_;
    OutputFile archive_;
    Sha256 archiveSum_;
    TarWriter tar_;
    OutputFile labels_;
    Sha256 labelsSum_;
    std::mutex mutex_; // guards all above and below while sounds come
    std::vector<Waiting> waiting_;
    std::int64_t written_ = 0;
};

ShardRecord placeOf(const DatasetPlan& plan, std::int64_t number) {
    ShardRecord record;
    record.number = number;
    record.first = number * plan.perShard;
    record.sounds = std::min(plan.perShard, plan.count - record.first);
    return record;
}

ShardRecord recordOf(const DatasetPlan& plan, std::int64_t number, const Json& json) {
    ShardRecord record = placeOf(plan, number);
    json.at("bytes").get_to(record.bytes);
    json.at("sha256").get_to(record.sha256);
    json.at("labels_sha256").get_to(record.labelsSha256);
    json.at("for_tests").get_to(record.forTests);
    json.at("silent").get_to(record.silent);
    json.at("clipped").get_to(record.clipped);
    json.at("broken").get_to(record.broken);
    return record;
}

bool isWhole(const DatasetFolder& folder, const ShardRecord& record, bool readsAll) {
    const std::string key = keyOf(record.number);
    std::error_code error; // a file that is not there has another size
    const auto bytes = std::filesystem::file_size(folder.archive(key), error);
    if (error || static_cast<std::int64_t>(bytes) != record.bytes ||
        !std::filesystem::exists(folder.labels(key), error)) {
        return false;
    }
    return !readsAll || (sha256Of(folder.archive(key)) == record.sha256 &&
                         sha256Of(folder.labels(key)) == record.labelsSha256);
}

} // namespace

Json shardJson(const ShardRecord& record) {
    return {{"shard", "shards/" + keyOf(record.number) + ".tar"},
            {"first", record.first},
            {"sounds", record.sounds},
            {"for_tests", record.forTests},
            {"silent", record.silent},
            {"clipped", record.clipped},
            {"broken", record.broken},
            {"bytes", record.bytes},
            {"sha256", record.sha256},
            {"labels_sha256", record.labelsSha256}};
}

ShardRecord makeShard(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t number,
                      ThreadTeam& team, const SoundDone& done) {
    const ShardRecord place = placeOf(plan, number);
    ShardWriter writer(plan, folder, place, done);
    const std::int64_t atOnce = soundsAtOnce(plan);
    for (std::int64_t start = 0; start < place.sounds; start += kBatch) {
        const std::int64_t end = std::min(start + kBatch, place.sounds);
        team.run(static_cast<int>((end - start + atOnce - 1) / atOnce), [&](int i) {
            InterruptWatch::check();
            const std::int64_t first = start + i * atOnce;
            std::vector<std::int64_t> numbers(
                static_cast<std::size_t>(std::min(atOnce, end - first)));
            std::iota(numbers.begin(), numbers.end(), place.first + first);
            writer.put(makeSounds(plan, numbers));
        });
    }
    ShardRecord record = writer.finish();
    Json json = shardJson(record);
    json["dataset"] = folder.identity();
    writeWhole(folder.record(keyOf(number)), jsonText(json));
    return record;
}

FoundShard findShard(const DatasetPlan& plan, const DatasetFolder& folder, std::int64_t number,
                     bool readsAll) {
    const std::string key = keyOf(number);
    std::error_code error; // a record that cannot be looked at counts as missing
    if (!std::filesystem::exists(folder.record(key), error)) {
        return {};
    }
    try {
        const Json json = readJson(folder.record(key));
        const ShardRecord record = recordOf(plan, number, json);
        if (json.at("dataset") == folder.identity() && isWhole(folder, record, readsAll)) {
            return {ShardState::kFinished, record};
        }
    } catch (const InputError&) {      // damaged, as below
    } catch (const Json::exception&) { // the same
    }
    return {ShardState::kDamaged, {}};
}

} // namespace zelvatone
