#include "vstguieditor/TextMailbox.h"

#include <bit>

namespace zelvatone {

void TextMailbox::post(const std::string& text) {
    const std::uint32_t slot = claim();
    slots_[slot] = text;
    // Released to the thread that takes the slot, acquired from the one that filled the last.
    const std::uint32_t previous = posted_.exchange(slot, std::memory_order_acq_rel);
    if (previous != kNone) {
        release(previous);
    }
}

bool TextMailbox::take(std::string& text) {
    // Read first: at most idles there is nothing, and reading disturbs no writer.
    if (posted_.load(std::memory_order_relaxed) == kNone) {
        return false;
    }
    const std::uint32_t slot = posted_.exchange(kNone, std::memory_order_acq_rel);
    if (slot == kNone) {
        return false;
    }
    text = slots_[slot];
    release(slot);
    return true;
}

std::uint32_t TextMailbox::claim() {
    for (;;) {
        std::uint32_t freeNow = freeSlots_.load(std::memory_order_relaxed);
        while (freeNow != 0) {
            const auto slot = static_cast<std::uint32_t>(std::countr_zero(freeNow));
            if (freeSlots_.compare_exchange_weak(freeNow, freeNow & ~(1U << slot),
                                                 std::memory_order_acquire,
                                                 std::memory_order_relaxed)) {
                return slot;
            }
        }
        // The posted text is about to be replaced anyway.
        const std::uint32_t previous = posted_.exchange(kNone, std::memory_order_acq_rel);
        if (previous != kNone) {
            return previous;
        }
    }
}

void TextMailbox::release(std::uint32_t slot) {
    freeSlots_.fetch_or(1U << slot, std::memory_order_release);
}

} // namespace zelvatone
