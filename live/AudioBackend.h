// Where live sound goes to and notes come from: the seam between the player and a sound system.
#pragma once

#include "performance/MidiMessage.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

// What a sound system calls for each block.
class AudioClient {
public:
    // Audio thread. Writes the next `frames` samples of both channels. `messages`: channel
    // messages that have come in, by frame of this block.
    virtual void process(float* left, float* right, std::int32_t frames,
                         std::span<const MidiMessage> messages) noexcept = 0;

protected:
    ~AudioClient() = default;
};

struct DeviceChoice {
    std::optional<std::string> output; // a part of a device's name; none: the system's own choice
    std::vector<std::string> inputs;   // the same for keyboards; empty: all
    std::optional<int> rate;           // Hz
    std::optional<int> buffer;         // samples a block
};

// For an output or an input: connect nothing.
inline constexpr const char* kNoDevice = "none";

struct AudioFormat {
    int rate;   // Hz
    int buffer; // samples a block
};

struct BackendStatus {
    bool isRunning = false;
    double latencySeconds = 0.0;   // from a note to the speaker, as far as the system knows it
    std::int64_t lateBlocks = 0;   // since the start
    std::int64_t lostMessages = 0; // that came too fast for a block, since the start
    bool isConnected = false;      // to an output
    int keyboards = 0;             // connected
};

// All but the client's calls on the thread that made it.
class AudioBackend {
public:
    AudioBackend() = default;
    virtual ~AudioBackend() = default; // stops
    AudioBackend(const AudioBackend&) = delete;
    AudioBackend& operator=(const AudioBackend&) = delete;

    virtual std::string name() const = 0;
    // From the construction on; a block may be shorter or longer than the buffer.
    virtual AudioFormat format() const = 0;
    // Calls `client`, which must outlive the backend, from now on. Once. Throws InputError.
    virtual void start(AudioClient& client) = 0;
    // Calls it no more, for good.
    virtual void stop() = 0;
    // Connects what has been plugged in and comes back when the system was away. Call it a few
    // times a second. Returns what there is to tell the user, a line; empty for nothing. Throws
    // InputError when playing cannot go on.
    virtual std::string tend() = 0;
    virtual BackendStatus status() const = 0;
};

struct AudioDevices {
    std::vector<std::string> outputs;
    std::vector<std::string> inputs;
};

} // namespace zelvatone
