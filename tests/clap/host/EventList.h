// Lists of CLAP events, to and from a plug-in.
#pragma once

#include "clap/abi/Events.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace zelvatone::test {

clap::ParamValueEvent paramValue(std::uint32_t time, std::uint32_t id, double value,
                                 void* cookie = nullptr);
clap::NoteEvent note(std::uint32_t time, clap::EventType type, std::int16_t key,
                     double velocity = 0.8, std::int32_t noteId = -1, std::int16_t channel = 0);
clap::MidiEvent midi(std::uint32_t time, std::uint8_t status, std::uint8_t data1,
                     std::uint8_t data2);
clap::TransportEvent tempo(std::uint32_t time, double beatsPerMinute);

// Events for a plug-in. They must be added by rising time.
class InputList {
public:
    InputList();
    InputList(const InputList&) = delete;
    InputList& operator=(const InputList&) = delete;

    template<class Event>
    void add(const Event& event) {
        addBytes(&event.header, sizeof event);
    }
    void clear();
    bool isEmpty() const { return events_.empty(); }
    const clap::InputEvents& record() const { return record_; }

private:
    void addBytes(const clap::EventHeader* event, std::size_t size);
    static std::uint32_t size(const clap::InputEvents* list);
    static const clap::EventHeader* get(const clap::InputEvents* list, std::uint32_t index);

    // Wide enough for every event, and aligned for it.
    using Slot = std::vector<std::max_align_t>;
    std::deque<Slot> events_;
    clap::InputEvents record_;
};

// What a plug-in has sent: the values and gestures of parameters.
class OutputList {
public:
    struct Event {
        std::uint16_t type;
        std::uint32_t time;
        std::uint32_t param;
        double value; // of a value
    };

    OutputList();
    OutputList(const OutputList&) = delete;
    OutputList& operator=(const OutputList&) = delete;

    const clap::OutputEvents& record() const { return record_; }
    std::vector<Event> events;
    // Whether times rise from the event `first` on.
    bool isSorted(std::size_t first = 0) const;

private:
    static bool tryPush(const clap::OutputEvents* list, const clap::EventHeader* event);

    clap::OutputEvents record_;
};

} // namespace zelvatone::test
