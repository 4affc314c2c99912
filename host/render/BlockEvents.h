// Cuts a schedule into blocks.
#pragma once

#include "host/render/EventRecords.h"
#include "host/render/EventSchedule.h"

#include <cstdint>
#include <utility>

namespace zelvatone {

class BlockEvents {
public:
    // Throws InputError when a block of `blockSize` samples has over a million events.
    BlockEvents(EventSchedule schedule, int blockSize);

    // Of the fullest block, the most of each kind.
    const EventCounts& most() const { return most_; }

    // Calls `take` with the offset and the message of each event of the next block.
    template<typename Take>
    void next(const Take& take) {
        for (; !schedule_.atEnd() && schedule_.frame() < blockStart_ + blockSize_;
             schedule_.advance()) {
            take(static_cast<std::int32_t>(schedule_.frame() - blockStart_), schedule_.message());
        }
        blockStart_ += blockSize_;
    }

private:
    EventCounts fullestBlock() const;

    EventSchedule schedule_;
    std::int64_t blockSize_;
    std::int64_t blockStart_ = 0; // sample that the next block starts at
    EventCounts most_;
};

} // namespace zelvatone
