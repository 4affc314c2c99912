#include "engine/EventRing.h"

namespace zelvatone {

std::int32_t EventRing::write(const Entry& entry) {
    if (free() == 0) {
        return 0;
    }
    entries[writeIndex & (kBufferSize - 1)] = entry;
    writeIndex = (writeIndex + 1) & kIndexMask;
    return 1;
}

std::int32_t EventRing::read(Entry& entry) {
    if (available() == 0) {
        return 0;
    }
    entry = entries[readIndex & (kBufferSize - 1)];
    readIndex = (readIndex + 1) & kIndexMask;
    return 1;
}

} // namespace zelvatone
