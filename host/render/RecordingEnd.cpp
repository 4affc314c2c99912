#include "host/render/RecordingEnd.h"

#include "host/render/EventSchedule.h"
#include "host/render/Silence.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

constexpr double kLongestOpenTailSeconds = 30.0;
constexpr double kFadeSeconds = 2.0; // long enough to be heard as an end, not as a slip

} // namespace

RecordingEnd::RecordingEnd(std::int64_t songFrames, std::optional<double> tailSeconds,
                           double sampleRate)
    : songFrames_(songFrames),
      lastFrame_(songFrames + frameAt(tailSeconds.value_or(kLongestOpenTailSeconds), sampleRate)),
      silenceNeeded_(tailSeconds ? 0 : frameAt(kSilenceSeconds, sampleRate)),
      isOver_(lastFrame_ == 0) {}

// Counts the silence after the song; false when there has been enough.
bool RecordingEnd::soundsOn(std::span<const float> frame) {
    if (silenceNeeded_ == 0 || position_ < songFrames_) {
        return true;
    }
    const bool isSilent =
        std::all_of(frame.begin(), frame.end(), [](float x) { return std::abs(x) < kSilentLevel; });
    silence_ = isSilent ? silence_ + 1 : 0;
    return silence_ < silenceNeeded_;
}

std::int64_t RecordingEnd::take(std::span<const float> samples, int channels) {
    const auto width = static_cast<std::size_t>(channels);
    const std::int64_t before = position_;
    for (std::size_t at = 0; at < samples.size() && !isOver_; at += width) {
        const bool goesOn = soundsOn(samples.subspan(at, width));
        ++position_;
        isOver_ = !goesOn || position_ == lastFrame_;
        wasEndless_ = goesOn && isOver_ && silenceNeeded_ != 0;
    }
    return position_ - before;
}

FadeOut endlessFade(std::int64_t songFrames, double sampleRate) {
    const std::int64_t end = songFrames + frameAt(kLongestOpenTailSeconds, sampleRate);
    return {end - frameAt(kFadeSeconds, sampleRate), end};
}

} // namespace zelvatone
