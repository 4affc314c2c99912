// What the user does in the editor, on its way to the host.
#pragma once

#include "clap/abi/Events.h"
#include "formats/Instrument.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace zelvatone {

// Hosts take events from the plug-in while a block is played or parameters are flushed, so the
// user-interface thread leaves them here. One thread writes, one at a time reads; no locks.
class EditQueue {
public:
    enum class Kind : std::uint8_t { kBegin, kValue, kEnd };

    // User-interface thread. When the host takes nothing for long, values are dropped before the
    // ends of gestures are: the last value stands in the instrument, where the host finds it.
    void push(Kind kind, std::uint32_t id);
    // Hands all that waits to `out`, at the first sample of the block; values are those that
    // `instrument` has now. Audio thread, or any while no block is played.
    void sendTo(const clap::OutputEvents& out, const Instrument& instrument);

private:
    static constexpr std::size_t kCapacity = 512;
    static constexpr std::size_t kMostValues = 384; // a drag's moves for some seconds

    struct Edit {
        Kind kind;
        std::uint32_t id;
    };

    std::array<Edit, kCapacity> edits_{};
    std::atomic<std::size_t> written_ = 0; // both count up; the place is the remainder
    std::atomic<std::size_t> read_ = 0;
};

} // namespace zelvatone
