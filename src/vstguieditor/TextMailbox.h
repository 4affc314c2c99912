// Texts from any thread to the user-interface thread.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

namespace zelvatone {

// Holds the text that was posted last until it is taken; what was posted before it and not taken
// is gone. Texts are kept in a few slots. A writer claims a free slot, fills it while no other
// thread reads it, and exchanges its number with the one posted before; it then sets that slot
// free. The reader takes the posted number away in the same manner. So no thread ever waits for a
// lock, none sees a text that is half written, and the last exchange wins.
class TextMailbox {
public:
    // Any thread. Allocates only for a text longer than any that its slot has held, and never for
    // one that fits a std::string itself (15 bytes).
    void post(const std::string& text);
    // Moves the posted text into `text`; returns false, and leaves it, if none is posted. One
    // thread at a time.
    bool take(std::string& text);

private:
    // One is posted, one is being read; the others are for writers: six threads may be in `post` of
    // the same mailbox at once before one more has to go round until one of them has left it.
    static constexpr std::uint32_t kSlots = 8;
    static constexpr std::uint32_t kNone = kSlots;

    std::uint32_t claim();
    void release(std::uint32_t slot);

    std::array<std::string, kSlots> slots_;
    std::atomic<std::uint32_t> freeSlots_ = (1U << kSlots) - 1; // one bit a slot
    std::atomic<std::uint32_t> posted_ = kNone;

    static_assert(std::atomic<std::uint32_t>::is_always_lock_free);
};

} // namespace zelvatone
