#include "tour/TourStop.h"

#include "host/audio/Decibels.h"
#include "host/audio/LevelMeter.h"
#include "host/audio/NonFinite.h"
#include "host/audio/SoundFileWriter.h"
#include "host/plugin/Programs.h"
#include "host/render/InstrumentPlayer.h"
#include "host/text/FileNames.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"
#include "tour/Spectrogram.h"
#include "tour/Waveform.h"

#include <cmath>

namespace zelvatone {

namespace {

constexpr int kBlockSize = 512;
constexpr double kPeakDecibels = -1.0; // leaves room for what OGG adds
// Pixels; twice what the page shows, for screens of double density.
constexpr int kPictureWidth = 960;
constexpr int kSpectrogramHeight = 320;
constexpr int kWaveformHeight = 96;

void level(TourStop& stop, TourSound& sound) {
    stop.brokenSamples = silenceNonFinite(sound.samples);
    LevelMeter meter;
    meter.measure(sound.samples);
    stop.peakDecibels = meter.peakDecibels();
    if (meter.peak() > 0.0F) {
        const float gain = gainFactor(kPeakDecibels) / meter.peak();
        for (float& sample : sound.samples) {
            sample *= gain;
        }
    }
}

// The mean of all channels.
std::vector<float> monoOf(const TourSound& sound) {
    const auto channels = static_cast<std::size_t>(sound.channels);
    std::vector<float> mono(sound.samples.size() / channels, 0.0F);
    for (std::size_t i = 0; i < sound.samples.size(); ++i) {
        mono[i / channels] += sound.samples[i] / static_cast<float>(sound.channels);
    }
    return mono;
}

void writeSound(const std::filesystem::path& path, const TourSound& sound) {
    SoundFileFormat format;
    format.container = containerOf(path);
    format.sampleRate = static_cast<int>(kTourRate);
    format.channels = sound.channels;
    SoundFileWriter writer(path, format);
    writer.write(sound.samples);
    writer.commit();
}

} // namespace

void renderStop(const PluginLibrary& library, const Song& song, TourStop& stop, TourSound& sound) {
    HostedPlugin plugin(library, {kTourRate, kBlockSize});
    selectProgram(plugin, stop.number);
    stop.parameters = readParameters(plugin);
    InstrumentPlayer player(plugin, song, scheduleEvents(song, kTourRate));
    sound.channels = player.channels();
    const auto wanted = static_cast<std::size_t>(frameAt(song.seconds, kTourRate)) *
                        static_cast<std::size_t>(sound.channels);
    std::vector<float> block(static_cast<std::size_t>(kBlockSize * sound.channels));
    while (sound.samples.size() < wanted) {
        InterruptWatch::check();
        player.renderBlock();
        std::fill(block.begin(), block.end(), 0.0F);
        player.addTo(block, 1.0F);
        sound.samples.insert(sound.samples.end(), block.begin(), block.end());
    }
    sound.samples.resize(wanted);
    level(stop, sound);
}

void writeStop(const std::filesystem::path& folder, const TourStop& stop, const TourSound& sound,
               const Spectrogram& spectrogram) {
    writeSound(folder / (stop.file + ".ogg"), sound);
    const std::vector<float> mono = monoOf(sound);
    InterruptWatch::check();
    writePng(folder / (stop.file + "-spectrum.png"),
             spectrogram.draw(mono, kPictureWidth, kSpectrogramHeight));
    writePng(folder / (stop.file + "-wave.png"),
             drawWaveform(mono, kPictureWidth, kWaveformHeight));
}

std::string stopFile(int number, int count, const std::string& name) {
    const std::size_t digits = formatText("{}", count - 1).size();
    return fileName(formatText("{:0{}}", number, digits), name);
}

} // namespace zelvatone
