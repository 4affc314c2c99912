#include "tour/TourStop.h"

#include "host/audio/Decibels.h"
#include "host/audio/LevelMeter.h"
#include "host/audio/NonFinite.h"
#include "host/plugin/Programs.h"
#include "host/preset/PresetTransfer.h"
#include "host/render/Finish.h"
#include "host/render/InstrumentPlayer.h"
#include "host/text/FileNames.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

constexpr int kBlockSize = 512;

TourSound play(HostedPlugin& plugin, const Song& song) {
    InstrumentPlayer player(plugin, song, scheduleEvents(song, kTourRate));
    TourSound sound{player.channels(), {}};
    const auto channels = static_cast<std::size_t>(sound.channels);
    const auto wanted = static_cast<std::size_t>(frameAt(song.seconds, kTourRate)) * channels;
    std::vector<float> block(kBlockSize * channels);
    while (sound.samples.size() < wanted) {
        InterruptWatch::check();
        player.renderBlock();
        std::ranges::fill(block, 0.0F);
        player.addTo(block, 1.0F);
        sound.samples.insert(sound.samples.end(), block.begin(), block.end());
    }
    sound.samples.resize(wanted);
    return sound;
}

void blockDc(TourSound& sound) {
    FinishPlan plan;
    plan.dcBlockHz = kDcBlockHz;
    Finish(plan, sound.channels, kTourRate).apply(sound.samples);
}

double dcOffsetOf(const TourSound& sound) {
    std::vector<double> sums(static_cast<std::size_t>(sound.channels), 0.0);
    for (std::size_t i = 0; i < sound.samples.size(); ++i) {
        sums[i % sums.size()] += static_cast<double>(sound.samples[i]);
    }
    const double most =
        std::ranges::max(sums, [](double a, double b) { return std::abs(a) < std::abs(b); });
    return most * sound.channels / static_cast<double>(sound.samples.size());
}

// A channel that repeats the first says nothing: half the size without it.
void dropEqualChannels(TourSound& sound) {
    const auto channels = static_cast<std::size_t>(sound.channels);
    std::vector<float> first;
    for (std::size_t i = 0; i < sound.samples.size(); ++i) {
        if (i % channels == 0) {
            first.push_back(sound.samples[i]);
        } else if (sound.samples[i] != first.back()) {
            return;
        }
    }
    sound = {1, std::move(first)};
}

void level(TourStop& stop, TourSound& sound) {
    stop.brokenSamples = silenceNonFinite(sound.samples);
    LevelMeter meter;
    meter.measure(sound.samples);
    stop.peakDecibels = meter.peakDecibels();
    stop.dcOffset = dcOffsetOf(sound);
    dropEqualChannels(sound);
    blockDc(sound);
    stop.loudness = loudnessOf(sound.samples, sound.channels, kTourRate);
    stop.gainDecibels = levellingGain(stop.loudness, kTourLufs, kTourPeakDecibels);
    const float gain = gainFactor(stop.gainDecibels);
    for (float& sample : sound.samples) {
        sample *= gain;
    }
}

NoteMeasures measureNote(HostedPlugin& plugin, const NoteMeter& meter) {
    TourSound note = play(plugin, measuredNote());
    silenceNonFinite(note.samples);
    blockDc(note);
    return meter.measure(monoOf(note));
}

} // namespace

void renderStop(const PluginLibrary& library, const Song& phrase, const NoteMeter& meter,
                TourStop& stop, TourSound& sound) {
    const StreamFormat stream{kTourRate, kBlockSize};
    HostedPlugin plugin(library, stream);
    selectProgram(plugin, stop.number);
    stop.parameters = readParameters(plugin);
    stop.preset = takeProgram(plugin);
    sound = play(plugin, phrase);
    level(stop, sound);
    // An instance of its own, in which nothing of the phrase rings on.
    HostedPlugin fresh(library, stream);
    selectProgram(fresh, stop.number);
    stop.measures = measureNote(fresh, meter);
}

std::vector<float> monoOf(const TourSound& sound) {
    const auto channels = static_cast<std::size_t>(sound.channels);
    std::vector<float> mono(sound.samples.size() / channels, 0.0F);
    for (std::size_t i = 0; i < sound.samples.size(); ++i) {
        mono[i / channels] += sound.samples[i] / static_cast<float>(sound.channels);
    }
    return mono;
}

std::string stopFile(int number, int count, const std::string& name) {
    const std::size_t digits = formatText("{}", count - 1).size();
    return fileName(formatText("{:0{}}", number, digits), name);
}

} // namespace zelvatone
