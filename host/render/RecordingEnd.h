// Decides which sample is a recording's last.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace zelvatone {

class RecordingEnd {
public:
    // The song lasts `songFrames`; after it come `tailSeconds`, or without them whatever sounds
    // on, until there has been silence for half a second or half a minute has passed. Rate in Hz.
    RecordingEnd(std::int64_t songFrames, std::optional<double> tailSeconds, double sampleRate);

    // How many frames at the front of the next block belong to the recording. `samples` are the
    // block's, channels interleaved. The recording is over when they are not all.
    std::int64_t take(std::span<const float> samples, int channels);

    bool isOver() const { return isOver_; }
    // Whether silence was waited for, and did not come.
    bool wasEndless() const { return wasEndless_; }
    std::int64_t frames() const { return position_; } // taken so far

private:
    bool soundsOn(std::span<const float> frame);

    std::int64_t songFrames_;
    std::int64_t lastFrame_;     // one past the last that may belong
    std::int64_t silenceNeeded_; // frames; 0 when silence ends nothing
    std::int64_t silence_ = 0;   // frames, in the tail
    std::int64_t position_ = 0;
    bool isOver_ = false;
    bool wasEndless_ = false;
};

// Frames. What does not end is faded out over so many, up to the recording's last frame.
struct FadeOut {
    std::int64_t start;
    std::int64_t end;
};

// Of a recording that waits for silence after a song of `songFrames`; rate in Hz.
FadeOut endlessFade(std::int64_t songFrames, double sampleRate);

} // namespace zelvatone
