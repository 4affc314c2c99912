// What a dataset costs beside the same sounds from the plug-in alone, in one run:
// zelvatone_dataset_bench PLUGIN [SOUNDS].
//
// Processor time of one thread, in turns, so that what else the machine does falls on both alike.
// The plug-in's part is a new instance for each sound, its parameters and its blocks; nothing is
// kept of them. The dataset's is all that a shard takes, to the file on the disk.

#include "dataset/FreedMemory.h"
#include "dataset/PlanText.h"
#include "dataset/Shard.h"
#include "host/plugin/HostedPlugin.h"
#include "host/text/Format.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace zelvatone {

namespace {

constexpr int kBlockSize = 512;

class Stopwatch {
public:
    // Seconds of processor time since the last call, or since the start.
    double lap() {
        const std::clock_t now = std::clock();
        const double seconds = static_cast<double>(now - last_) / CLOCKS_PER_SEC;
        last_ = now;
        return seconds;
    }

private:
    std::clock_t last_ = std::clock();
};

VstMidiEvent noteMessage(int status, const SoundRecipe& recipe, std::int64_t frame) {
    VstMidiEvent event{};
    event.type = kVstMidiType;
    event.byteSize = sizeof event;
    event.deltaFrames = static_cast<VstInt32>(frame);
    event.midiData[0] = static_cast<char>(status);
    event.midiData[1] = static_cast<char>(recipe.note);
    event.midiData[2] = static_cast<char>(recipe.velocity);
    return event;
}

float normalisedValue(const SoundRecipe& recipe, int index) {
    static const SynthProgram kProgram = makeDefaultProgram();
    const auto at = static_cast<std::size_t>(index);
    const SynthParameter& parameter = *kProgram.parameters.at(at);
    return parameter.toNormalised(parameter.min, parameter.max, recipe.values.at(at));
}

void renderWithPlugin(const PluginLibrary& library, const DatasetPlan& plan,
                      const SoundRecipe& recipe, std::int64_t frames) {
    HostedPlugin plugin(library, {static_cast<double>(plan.sampleRate), kBlockSize});
    for (int i = 0; i < kParameterCount; ++i) {
        plugin.setParameter(i, normalisedValue(recipe, i));
    }
    plugin.switchOn();
    std::vector<float> samples(2 * kBlockSize);
    std::array<float*, 2> outputs{samples.data(), samples.data() + kBlockSize};
    const auto hold = static_cast<std::int64_t>(plan.holdSeconds * plan.sampleRate);
    for (std::int64_t at = 0; at < frames; at += kBlockSize) {
        const bool isEnd = hold >= at && hold < at + kBlockSize;
        VstMidiEvent message = noteMessage(isEnd ? 0x80 : 0x90, recipe, isEnd ? hold - at : 0);
        VstEvents events{};
        events.numEvents = 1;
        events.events[0] = reinterpret_cast<VstEvent*>(&message);
        plugin.render({}, at == 0 || isEnd ? &events : nullptr, nullptr, outputs.data(),
                      kBlockSize);
    }
}

// Seconds for `frames` of a sound by a new instance.
double costOf(const PluginLibrary& library, const DatasetPlan& plan, const SoundRecipe& recipe,
              std::int64_t frames) {
    Stopwatch stopwatch;
    renderWithPlugin(library, plan, recipe, frames);
    return stopwatch.lap();
}

struct Cost {
    double instances = 0.0; // seconds for all sounds: making, setting and freeing instances
    double plugin = 0.0;    // these and their blocks
    double dataset = 0.0;
};

// Shard by shard in turns.
Cost measure(const PluginLibrary& library, const DatasetPlan& plan) {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "zelvatone-bench";
    std::filesystem::remove_all(path);
    DatasetFolder folder(path);
    folder.prepare(plan, "", "");
    ThreadTeam team(1);
    Cost cost;
    for (std::int64_t shard = 0; shard < plan.shards(); ++shard) {
        Stopwatch stopwatch;
        const std::int64_t first = shard * plan.perShard;
        for (std::int64_t i = first; i < std::min(first + plan.perShard, plan.count); ++i) {
            cost.plugin += costOf(library, plan, recipeOf(plan, i), plan.frames());
            cost.instances += costOf(library, plan, recipeOf(plan, i), 0);
        }
        stopwatch.lap();
        makeShard(plan, folder, shard, team, [] {});
        cost.dataset += stopwatch.lap();
    }
    std::filesystem::remove_all(path);
    return cost;
}

void compare(const PluginLibrary& library, DatasetPlan plan, const char* name) {
    for (const bool isFlac : {false, true}) {
        plan.isFlac = isFlac;
        const Cost cost = measure(library, plan);
        const auto count = static_cast<double>(plan.count);
        std::fputs(formatText("{:<24} {:<5} {:>8.0f} {:>8.0f} {:>6.0f} % {:>6.2f} h {:>6.0f} %\n",
                              name, isFlac ? "flac" : "wav", count / cost.plugin,
                              count / cost.dataset, 100.0 * cost.plugin / cost.dataset,
                              cost.dataset / count * 1e6 / 3600.0,
                              100.0 * cost.instances / cost.plugin)
                       .c_str(),
                   stderr);
    }
}

int run(const std::vector<std::string>& words) {
    if (words.empty()) {
        std::fputs("usage: zelvatone_dataset_bench PLUGIN [SOUNDS]\n", stderr);
        return 2;
    }
    const PluginLibrary library(words[0]);
    DatasetPlan plan;
    plan.count = words.size() > 1 ? std::atoll(words[1].c_str()) : 300;
    plan.programs = programsOf("all");
    plan.notes = numbersOf("--notes", "36-84", 0, 127);
    plan.velocities = {100};
    plan.perShard = 25;
    std::fputs("sounds of 1 s            file    plug-in  dataset            million  instances\n"
               "                                  sounds/s              one core  of plug-in\n",
               stderr);
    keepFreedMemory(); // for both
    compare(library, plan, "the programs as they are");
    plan.ranges = rangesOf("all");
    compare(library, plan, "all parameters drawn");
    return 0;
}

} // namespace

} // namespace zelvatone

int main(int argc, char** argv) {
    return zelvatone::run({argv + 1, argv + argc});
}
