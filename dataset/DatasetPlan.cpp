#include "dataset/DatasetPlan.h"

#include "dataset/InstrumentNames.h"
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

namespace {

constexpr const char* kNoPlan = "is not the description of a dataset";

void require(bool holds) {
    if (!holds) {
        throw InputError(kNoPlan);
    }
}

// Not empty, and each from `least` to `most`.
void requireWithin(const std::vector<int>& numbers, int least, int most) {
    require(!numbers.empty());
    for (const int number : numbers) {
        require(number >= least && number <= most);
    }
}

ValueRange rangeOf(const std::string& name, const Json& ends) {
    for (const ParameterUnits& units : parameterUnits()) {
        if (units.name == name) {
            const ValueRange range{units.index, ends.at(0).get<float>(), ends.at(1).get<float>()};
            require(range.low >= units.min && range.low <= range.high && range.high <= units.max);
            return range;
        }
    }
    throw InputError(kNoPlan);
}

// What a damaged file may say otherwise. The limits are those of the command's options.
void requireSane(const DatasetPlan& plan) {
    require(plan.count >= 1 && plan.perShard >= 1);
    require(plan.sampleRate >= 8000 && plan.sampleRate <= 192000);
    require(plan.seconds > 0.0 && plan.seconds <= 600.0 && plan.frames() >= 1);
    require(plan.holdSeconds >= 0.0 && plan.holdSeconds <= plan.seconds);
    require(plan.tempo >= 10.0 && plan.tempo <= 1000.0);
    requireWithin(plan.programs, 0, static_cast<int>(factoryNames().size()) - 1);
    requireWithin(plan.notes, 0, 127);
    requireWithin(plan.velocities, 1, 127);
}

} // namespace

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
        require(plan.isFlac || json.at("audio") == "wav");
        json.at("sounds_per_shard").get_to(plan.perShard);
        json.at("programs").get_to(plan.programs);
        json.at("notes").get_to(plan.notes);
        json.at("velocities").get_to(plan.velocities);
        for (const auto& [name, ends] : json.at("vary").items()) {
            plan.ranges.push_back(rangeOf(name, ends));
        }
    } catch (const Json::exception&) {
        throw InputError(kNoPlan);
    }
    requireSane(plan);
    return plan;
}

} // namespace zelvatone
