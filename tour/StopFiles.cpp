#include "tour/StopFiles.h"

#include "host/audio/LevelMeter.h"
#include "host/audio/SoundFileWriter.h"
#include "host/preset/PresetWriter.h"
#include "host/threads/Interrupt.h"
#include "tour/Waveform.h"

namespace zelvatone {

namespace {

// Pixels; twice what the page shows, for screens of double density.
constexpr int kPictureWidth = 960;
constexpr int kSpectrogramHeight = 320;
constexpr int kWaveformHeight = 96;

void writeSound(const std::filesystem::path& path, const TourSound& sound) {
    SoundFileFormat format;
    format.container = containerOf(path);
    format.samples = SampleKind::kInt16; // of FLAC: half the bytes of 24 bits
    format.sampleRate = static_cast<int>(kTourRate);
    format.channels = sound.channels;
    format.isPortable = true; // a release holds a tour: the same bytes wherever it is built
    SoundFileWriter writer(path, format);
    writer.write(sound.samples);
    writer.commit();
    InterruptWatch::check();
}

// To full scale: equally loud sounds differ much in their peaks, and a picture shows shapes.
std::vector<float> toFullScale(std::vector<float> samples) {
    LevelMeter meter;
    meter.measure(samples);
    if (meter.peak() > 0.0F) {
        for (float& sample : samples) {
            sample /= meter.peak();
        }
    }
    return samples;
}

} // namespace

void writeStop(const std::filesystem::path& folder, const TourStop& stop, const TourSound& sound,
               const Spectrogram& spectrogram) {
    const StopFiles files(stop.file);
    writeSound(folder / files.ogg, sound);
    writeSound(folder / files.flac, sound);
    writePreset(folder / files.preset, stop.preset);
    const std::vector<float> mono = monoOf(sound);
    writePng(folder / files.spectrum, spectrogram.draw(mono, kPictureWidth, kSpectrogramHeight));
    InterruptWatch::check();
    writePng(folder / files.wave, drawWaveform(toFullScale(mono), kPictureWidth, kWaveformHeight));
}

} // namespace zelvatone
