#include "host/render/BlockEvents.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <algorithm>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;
// Events that a block takes at most, which bounds the memory of their records to some 50 MB.
// Densest songs have a tenth of it in a second; more in a block is a damaged file.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 20U;

} // namespace

BlockEvents::BlockEvents(EventSchedule schedule, int blockSize)
    : schedule_(std::move(schedule)), blockSize_(blockSize), most_(fullestBlock()) {}

EventCounts BlockEvents::fullestBlock() const {
    EventCounts most;
    EventCounts counts;
    std::int64_t block = -1;
    for (EventSchedule events = schedule_; !events.atEnd(); events.advance()) {
        if (events.frame() / blockSize_ != block) {
            block = events.frame() / blockSize_;
            counts = {};
        }
        ++(events.message()[0] == kExclusive ? counts.exclusive : counts.midi);
        if (counts.midi + counts.exclusive > kMostAtOnce) {
            throw InputError(formatText("more than {} events of the song fall into {} samples",
                                        kMostAtOnce, blockSize_));
        }
        most.midi = std::max(most.midi, counts.midi);
        most.exclusive = std::max(most.exclusive, counts.exclusive);
    }
    return most;
}

} // namespace zelvatone
