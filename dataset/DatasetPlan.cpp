#include "dataset/DatasetPlan.h"

#include "formats/ParameterUnits.h"
#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

std::int64_t DatasetPlan::frames() const {
    return std::llround(seconds * sampleRate);
}

std::int64_t DatasetPlan::shards() const {
    return (count + perShard - 1) / perShard;
}

std::string keyOf(std::int64_t number) {
    return formatText("{:06}", number);
}

std::int64_t usualPerShard(const DatasetPlan& plan) {
    constexpr std::int64_t kShardBytes = 1'000'000'000;
    constexpr std::int64_t kLabelBytes = 4096; // the labels, the headers, and what fills up blocks
    const std::int64_t sampleBytes = plan.isFlac ? 3 : 4;
    return std::max<std::int64_t>(1, kShardBytes / (plan.frames() * sampleBytes + kLabelBytes));
}

Json planJson(const DatasetPlan& plan) {
    Json ranges = Json::object();
    for (const ValueRange& range : plan.ranges) {
        ranges[parameterUnits()[range.parameter].name] = {shortestDouble(range.low),
                                                          shortestDouble(range.high)};
    }
    return {{"count", plan.count},
            {"seed", plan.seed},
            {"seconds", plan.seconds},
            {"hold_seconds", plan.holdSeconds},
            {"sample_rate", plan.sampleRate},
            {"tempo", plan.tempo},
            {"audio", plan.isFlac ? "flac" : "wav"},
            {"sounds_per_shard", plan.perShard},
            {"programs", plan.programs},
            {"notes", plan.notes},
            {"velocities", plan.velocities},
            {"vary", ranges}};
}

DatasetPlan planOf(const Json& json) {
    DatasetPlan plan;
    try {
        json.at("count").get_to(plan.count);
        json.at("seed").get_to(plan.seed);
        json.at("seconds").get_to(plan.seconds);
        json.at("hold_seconds").get_to(plan.holdSeconds);
        json.at("sample_rate").get_to(plan.sampleRate);
        json.at("tempo").get_to(plan.tempo);
        plan.isFlac = json.at("audio") == "flac";
        json.at("sounds_per_shard").get_to(plan.perShard);
        json.at("programs").get_to(plan.programs);
        json.at("notes").get_to(plan.notes);
        json.at("velocities").get_to(plan.velocities);
        for (const auto& [name, ends] : json.at("vary").items()) {
            for (const ParameterUnits& units : parameterUnits()) {
                if (units.name == name) {
                    plan.ranges.push_back(
                        {units.index, ends.at(0).get<float>(), ends.at(1).get<float>()});
                }
            }
        }
    } catch (const Json::exception&) {
        throw InputError("is not the description of a dataset");
    }
    if (plan.count < 1 || plan.perShard < 1 || plan.frames() < 1 || plan.programs.empty() ||
        plan.notes.empty() || plan.velocities.empty()) {
        throw InputError("is not the description of a dataset");
    }
    return plan;
}

} // namespace zelvatone
