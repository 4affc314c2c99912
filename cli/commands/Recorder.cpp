#include "cli/commands/Recorder.h"

#include "host/threads/Interrupt.h"

#include <algorithm>
#include <limits>

namespace zelvatone {

Recorder::Recorder(SoundFileWriter& file, std::optional<Stems>& stems, std::optional<float> peak)
    : file_(file), stems_(stems), peak_(peak), levels_(1 + (stems ? stems->size() : 0)) {
    for (std::size_t stream = 0; peak_ && stream < streams(); ++stream) {
        spools_.push_back(std::make_unique<SampleSpool>(file.path()));
    }
}

std::span<const float> Recorder::samples(std::size_t stream, std::span<const float> mix) {
    return stream == 0 ? mix : stems_->samples(stream - 1, mix.size());
}

void Recorder::write(std::size_t stream, std::span<const float> samples) {
    levels_[stream].measure(samples);
    if (stream == 0) {
        file_.write(samples);
    } else {
        stems_->write(stream - 1, samples);
    }
}

void Recorder::take(std::span<const float> mix) {
    if (peak_) {
        meter_.measure(mix);
    }
    for (std::size_t stream = 0; stream < streams(); ++stream) {
        if (peak_) {
            spools_[stream]->write(samples(stream, mix));
        } else {
            write(stream, samples(stream, mix));
        }
    }
}

void Recorder::copy(std::size_t stream, float gain) {
    constexpr std::size_t kSamples = 65536; // enough for the disk, little for the memory
    std::vector<float> buffer(kSamples);
    SampleSpool& spool = *spools_[stream];
    spool.rewind();
    for (auto part = spool.read(buffer); !part.empty(); part = spool.read(buffer)) {
        InterruptWatch::check();
        std::for_each(part.begin(), part.end(), [gain](float& sample) { sample *= gain; });
        write(stream, part);
    }
}

void Recorder::finish() {
    // Silence has no level to bring it to.
    const float gain = peak_ && meter_.peak() > 0.0F ? *peak_ / meter_.peak() : 1.0F;
    for (std::size_t stream = 0; stream < spools_.size(); ++stream) {
        copy(stream, gain);
        spools_[stream].reset();
    }
}

std::int64_t Recorder::clippedSamples(std::size_t stream) const {
    return stream == 0 ? file_.clippedSamples() : stems_->clippedSamples(stream - 1);
}

double Recorder::clippedPeakDecibels() const {
    double peak = -std::numeric_limits<double>::infinity();
    for (std::size_t stream = 0; stream < streams(); ++stream) {
        if (clippedSamples(stream) > 0) {
            peak = std::max(peak, levels_[stream].peakDecibels());
        }
    }
    return peak;
}

} // namespace zelvatone
