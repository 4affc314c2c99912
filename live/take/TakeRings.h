// What the audio thread hands over for a recording, and the writer's thread takes.
#pragma once

#include "live/SpscRing.h"

#include <atomic>
#include <cstdint>
#include <span>

namespace zelvatone {

// A message or a move of a parameter, at a sample from the start.
struct TakeEvent {
    std::int64_t frame;
    std::int32_t parameter; // by index; below 0 for a message
    float value;            // of the parameter, normalised
    std::uint8_t status;    // of the message, channel 1
    std::uint8_t data1;
    std::uint8_t data2;
};

inline constexpr std::int32_t kNoParameter = -1;

class TakeRings {
public:
    // Room for `seconds` of sound, which is how long a disk may stand still. Rate in Hz.
    TakeRings(int rate, int channels, double seconds)
        : samples_(static_cast<std::size_t>(rate * seconds) * static_cast<std::size_t>(channels)),
          events_(static_cast<std::size_t>(kEventsASecond * seconds)) {}

    // Audio thread: what belongs to a block before its samples. What does not fit ends the
    // recording there: a take is whole up to its end.
    void add(const TakeEvent& event) { isFull_ = isFull_ || !events_.write(event); }
    // Of a whole block, channels interleaved.
    void add(std::span<const float> samples) { isFull_ = isFull_ || !samples_.write(samples); }

    // Writer's thread. Fill the front of the target and return how much that is.
    std::size_t read(std::span<float> samples) { return samples_.read(samples); }
    std::size_t read(std::span<TakeEvent> events) { return events_.read(events); }
    // Any thread: whether the recording has been ended.
    bool isFull() const { return isFull_; }

private:
    static constexpr double kEventsASecond = 4000.0; // more than four MIDI cables carry

    SpscRing<float> samples_;
    SpscRing<TakeEvent> events_;
    std::atomic<bool> isFull_{false};
};

} // namespace zelvatone
