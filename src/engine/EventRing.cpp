#include "engine/EventRing.h"

#include <algorithm>
#include <limits>

namespace zelvatone {

std::int32_t EventRing::write(const Entry& entry) {
    if (free() == 0) {
        return 0;
    }
    entries_[writeIndex_ & (kBufferSize - 1)] = entry;
    writeIndex_ = (writeIndex_ + 1) & kIndexMask;
    return 1;
}

std::int32_t EventRing::read(Entry& entry) {
    if (available() == 0) {
        return 0;
    }
    entry = entries_[readIndex_ & (kBufferSize - 1)];
    readIndex_ = (readIndex_ + 1) & kIndexMask;
    return 1;
}

std::int32_t EventRing::shortestWait() const {
    std::int32_t shortest = std::numeric_limits<std::int32_t>::max();
    for (std::int32_t i = 0; i < available(); ++i) {
        shortest = std::min(shortest, entries_[(readIndex_ + i) & (kBufferSize - 1)].framesLeft);
    }
    return shortest;
}

void EventRing::countDown(std::int32_t samples) {
    for (std::int32_t i = 0; i < available(); ++i) {
        entries_[(readIndex_ + i) & (kBufferSize - 1)].framesLeft -= samples;
    }
}

} // namespace zelvatone
