#include "dataset/LabelledSound.h"

#include "dataset/FlacFile.h"
#include "dataset/InstrumentNames.h"
#include "dataset/SoundLoudness.h"
#include "formats/Instrument.h"
#include "formats/ParameterUnits.h"
#include "host/audio/WavEncoder.h"
#include "host/files/MemoryFile.h"
#include "host/text/Format.h"
#include "host/text/Json.h"
#include "host/text/Numbers.h"
#include "params/CheckedAccess.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace zelvatone {

namespace {

// What the host renders at a time. Part of the sound: parameters are read once a block.
constexpr std::int64_t kBlockSize = 512;
constexpr float kSilentPeak = 0.001F; // -60 dBFS

struct TimedMessage {
    std::int64_t frame;
    std::uint8_t status;
    std::uint8_t velocity;
};

std::vector<char> wavFile(std::span<const float> samples, int sampleRate) {
    const SoundFileFormat format{.container = Container::kWav,
                                 .samples = SampleKind::kFloat,
                                 .sampleRate = sampleRate,
                                 .channels = 1};
    MemoryFile file;
    WavEncoder encoder(file, format);
    encoder.write(samples);
    encoder.finish();
    return file.take();
}

std::vector<char> encoded(const DatasetPlan& plan, std::span<const float> samples) {
    return plan.isFlac ? flacFile(flacNumbers(samples), plan.sampleRate)
                       : wavFile(samples, plan.sampleRate);
}

// As labels give it; none for silence.
std::optional<double> shownLoudness(const LabelledSound& sound) {
    if (std::isinf(sound.loudness)) {
        return std::nullopt;
    }
    return std::round(sound.loudness * 100.0) / 100.0;
}

// The instrument's own mapping.
float normalised(const ParameterUnits& parameter, float units) {
    static const SynthProgram kProgram = makeDefaultProgram();
    return checkedAt(kProgram.parameters, parameter.index)
        ->toNormalised(parameter.min, parameter.max, units);
}

std::string quoted(const std::string& text) {
    return text.find_first_of(",\"") == std::string::npos ? text : '"' + text + '"';
}

const char* splitOf(const SoundRecipe& recipe) {
    return recipe.isForTests ? "test" : "train";
}

} // namespace

std::vector<float> renderSound(const DatasetPlan& plan, const SoundRecipe& recipe) {
    Instrument instrument(Instrument::ProgramChange::kIgnored);
    instrument.setSampleRate(plan.sampleRate);
    for (const ParameterUnits& parameter : parameterUnits()) {
        instrument.setValue(parameter.index,
                            static_cast<double>(checkedAt(recipe.values, parameter.index)));
    }
    const std::array<TimedMessage, 2> messages{
        {{0, kNoteOnStatus, static_cast<std::uint8_t>(recipe.velocity)},
         {std::llround(plan.holdSeconds * plan.sampleRate), kNoteOffStatus, 0}}};
    const std::int64_t frames = plan.frames();
    std::vector<float> samples(static_cast<std::size_t>(frames));
    for (std::int64_t at = 0; at < frames; at += kBlockSize) {
        const std::int64_t count = std::min(kBlockSize, frames - at);
        float* block = samples.data() + at;
        instrument.beginBlock(block, block, static_cast<std::int32_t>(count));
        instrument.tempoAt(0, plan.tempo);
        for (const TimedMessage& message : messages) {
            if (message.frame >= at && message.frame < at + count) {
                instrument.midiAt({.frame = static_cast<std::int32_t>(message.frame - at),
                                   .status = message.status,
                                   .data1 = static_cast<std::uint8_t>(recipe.note),
                                   .data2 = message.velocity});
            }
        }
        instrument.endBlock();
    }
    return samples;
}

int soundsAtOnce(const DatasetPlan& plan) {
    constexpr std::int64_t kMany = std::int64_t{1} << 22U; // samples: 16 MB
    return plan.frames() > kMany ? 1 : static_cast<int>(kLoudnessLanes);
}

std::vector<LabelledSound> makeSounds(const DatasetPlan& plan,
                                      std::span<const std::int64_t> numbers) {
    std::vector<LabelledSound> sounds(numbers.size());
    std::vector<std::vector<float>> samples;
    for (std::size_t i = 0; i < sounds.size(); ++i) {
        LabelledSound& sound = sounds[i];
        sound.recipe = recipeOf(plan, numbers[i]);
        samples.push_back(renderSound(plan, sound.recipe));
        sound.level = measureLevel(samples[i]);
        sound.isSilent = sound.level.peak < kSilentPeak;
        sound.file = encoded(plan, samples[i]);
    }
    for (std::size_t first = 0; first < sounds.size(); first += kLoudnessLanes) {
        const std::size_t last = std::min(first + kLoudnessLanes, sounds.size()) - 1;
        std::array<std::span<const float>, kLoudnessLanes> lanes;
        for (std::size_t i = 0; i < kLoudnessLanes; ++i) {
            lanes[i] = samples[std::min(first + i, last)];
        }
        const auto loudness = soundLoudness(lanes, plan.sampleRate);
        for (std::size_t i = first; i <= last; ++i) {
            sounds[i].loudness = loudness[i - first];
        }
    }
    return sounds;
}

LabelledSound makeSound(const DatasetPlan& plan, std::int64_t number) {
    return std::move(makeSounds(plan, {&number, 1}).front());
}

std::string labelText(const DatasetPlan& plan, const LabelledSound& sound) {
    const SoundRecipe& recipe = sound.recipe;
    Json units = Json::object();
    Json normalisedValues = Json::object();
    for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
        const float value = checkedAt(recipe.values, parameter.index);
        units[parameter.name] = shortestDouble(value);
        normalisedValues[parameter.name] = shortestDouble(normalised(parameter, value));
    }
    Json label{{"sound", recipe.number},
               {"split", splitOf(recipe)},
               {"program", checkedAt(factoryNames(), recipe.program)},
               {"note", recipe.note},
               {"velocity", recipe.velocity},
               {"tempo", plan.tempo},
               {"seconds", plan.seconds},
               {"hold_seconds", plan.holdSeconds},
               {"sample_rate", plan.sampleRate},
               {"peak", shortestDouble(sound.level.peak)},
               {"loudness", nullptr},
               {"silent", sound.isSilent},
               {"clipped_samples", sound.level.clippedSamples},
               {"broken_samples", sound.level.brokenSamples},
               {"units", std::move(units)},
               {"normalised", std::move(normalisedValues)}};
    if (const auto loudness = shownLoudness(sound)) {
        label["loudness"] = *loudness;
    }
    return label.dump() + "\n";
}

std::string tableHeading() {
    std::string line = "sound,split,shard,program,note,velocity";
    for (const std::string& name : shownParameterNames()) {
        line += "," + quoted(name);
    }
    return line + ",peak,loudness,silent,clipped\n";
}

std::string tableLine(const DatasetPlan& plan, const LabelledSound& sound) {
    const SoundRecipe& recipe = sound.recipe;
    std::string line = formatText(
        "{},{},{},{},{},{}", recipe.number, splitOf(recipe), recipe.number / plan.perShard,
        quoted(checkedAt(factoryNames(), recipe.program)), recipe.note, recipe.velocity);
    for (std::int32_t i = 0; i < kShownParameters; ++i) {
        line += "," + shortestText(checkedAt(recipe.values, i));
    }
    const auto loudness = shownLoudness(sound);
    return formatText("{},{},{},{},{}\n", line, shortestText(sound.level.peak),
                      loudness ? formatText("{:.2f}", *loudness) : std::string(),
                      sound.isSilent ? 1 : 0, sound.level.clippedSamples > 0 ? 1 : 0);
}

} // namespace zelvatone
