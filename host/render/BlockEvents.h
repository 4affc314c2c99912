// Cuts a schedule into blocks of events in the form that plug-ins take them.
#pragma once

#include "host/render/EventSchedule.h"
#include "vst2/aeffectx.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zelvatone {

class BlockEvents {
public:
    // Sets memory aside for the fullest block of `blockSize` samples, so that rendering takes
    // none and no event is ever left out. Throws InputError when it has over a million events.
    BlockEvents(EventSchedule schedule, int blockSize);
    // The records point into each other.
    BlockEvents(const BlockEvents&) = delete;
    BlockEvents& operator=(const BlockEvents&) = delete;

    // The events of the next block, with their offsets in it; null when it has none. Holds until
    // the next call.
    VstEvents* next();

private:
    struct Counts {
        std::size_t midi = 0;
        std::size_t exclusive = 0;
    };

    Counts fullestBlock() const; // the most of each kind
    VstEvent* addMessage();      // of the event that is due next

    EventSchedule schedule_;
    std::int64_t blockSize_;
    std::int64_t blockStart_ = 0; // sample that the next block starts at
    std::vector<VstMidiEvent> midi_;
    std::vector<VstMidiSysexEvent> exclusive_;
    std::vector<VstIntPtr> list_; // room for a VstEvents record and the pointers after it
};

} // namespace zelvatone
