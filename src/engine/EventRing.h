// The queue of events that wait for their sample.
#pragma once

#include <array>
#include <cstdint>

namespace zelvatone {

class SynthEvent;

// A ring of a power of two entries. Both indices run modulo twice the size, so that a full ring and
// an empty one differ. Written and read on the audio thread only: no atomics.
class EventRing {
public:
    struct Entry {
        std::int32_t framesLeft; // samples still to wait
        SynthEvent* event;
    };

    // Room for twice all-notes-off (128 events) in one block.
    static constexpr std::int32_t kBufferSize = 256;

    // Entries waiting.
    std::int32_t available() const { return (writeIndex_ - readIndex_) & kIndexMask; }
    std::int32_t free() const { return kBufferSize - available(); }
    // Appends `entry`; returns how many entries were written: 1, or 0 when the ring is full.
    std::int32_t write(const Entry& entry);
    // Takes the oldest entry into `entry`; returns 1, or 0 when there is none.
    std::int32_t read(Entry& entry);
    // The entry that is `i`-th to be read, 0 to available() - 1.
    const Entry& peek(std::int32_t i) const {
        return entries_[(readIndex_ + i) & (kBufferSize - 1)];
    }
    // The shortest wait of all entries; the highest integer when there is none.
    std::int32_t shortestWait() const;
    // Takes `samples` off every wait.
    void countDown(std::int32_t samples);

private:
    static constexpr std::int32_t kIndexMask = 2 * kBufferSize - 1;

    std::array<Entry, kBufferSize> entries_{};
    std::int32_t writeIndex_ = 0;
    std::int32_t readIndex_ = 0;
};

} // namespace zelvatone
