// Takes what an ensemble plays into the files of a rendering.
#pragma once

#include "host/audio/LevelMeter.h"
#include "host/audio/SampleSpool.h"
#include "host/audio/SoundFileWriter.h"
#include "host/render/Stems.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace zelvatone {

class Recorder {
public:
    // The mix goes to `file`, the parts to `stems` where there are any. With `peak`, a level above
    // 0, all wait on the disk until finish() brings the mix's largest sample to it. Throws
    // InputError when they cannot. What is named must outlive the recorder.
    Recorder(SoundFileWriter& file, std::optional<Stems>& stems, std::optional<float> peak);

    // Takes the front of the last round. Throws InputError when the disk is full.
    void take(std::span<const float> mix);
    // After the last round. Throws InputError and Interrupted.
    void finish();

    // All after finish(), of the files. The largest of those that clip; -infinity for none.
    double clippedPeakDecibels() const;
    double peakDecibels() const { return levels_[0].peakDecibels(); } // of the mix

private:
    std::size_t streams() const { return levels_.size(); } // the mix, then the stems
    std::span<const float> samples(std::size_t stream, std::span<const float> mix);
    void write(std::size_t stream, std::span<const float> samples);
    void copy(std::size_t stream, float gain);
    std::int64_t clippedSamples(std::size_t stream) const;

    SoundFileWriter& file_;
    std::optional<Stems>& stems_;
    std::optional<float> peak_;
    LevelMeter meter_;               // of the mix before it is brought to the peak, if it is
    std::vector<LevelMeter> levels_; // of what is written, by stream
    std::vector<std::unique_ptr<SampleSpool>> spools_; // by stream; none without a peak
};

} // namespace zelvatone
