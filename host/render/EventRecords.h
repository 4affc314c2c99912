// The events of a block in the form that plug-ins take them.
#pragma once

#include "vst2/aeffectx.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zelvatone {

struct EventCounts {
    std::size_t midi = 0;
    std::size_t exclusive = 0;
};

class EventRecords {
public:
    // Sets memory aside for so many of each kind; none is taken afterwards.
    explicit EventRecords(const EventCounts& most);
    // The records point into each other.
    EventRecords(const EventRecords&) = delete;
    EventRecords& operator=(const EventRecords&) = delete;

    // Whether there is no room for another message like this one.
    bool isFullFor(std::span<const std::uint8_t> message) const;
    // `offset`: sample of the block. `message`: 1 to 3 bytes, or a whole exclusive message, which
    // must stay where it is until clear().
    void add(std::int32_t offset, std::span<const std::uint8_t> message);
    void clear();

    // All that were added, in their order; null for none. Holds until the next call.
    VstEvents* list();

private:
    VstEvents* head() { return reinterpret_cast<VstEvents*>(list_.data()); }

    EventCounts most_;
    std::vector<VstMidiEvent> midi_;
    std::vector<VstMidiSysexEvent> exclusive_;
    std::vector<VstIntPtr> list_; // room for a VstEvents record and the pointers after it
};

} // namespace zelvatone
