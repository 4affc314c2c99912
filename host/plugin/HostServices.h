// How the host handles the requests of one plug-in instance: who it is, where the music
// stands, what it can do.
#pragma once

#include "host/plugin/EditListener.h"
#include "vst2/aeffectx.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

namespace zelvatone {

struct StreamFormat {
    double sampleRate = 44100.0; // Hz
    int blockSize = 512;         // samples, the most in one block
};

// One per instance; it must live as long as the plug-in can call. Plug-ins call from any thread.
class HostServices {
public:
    // `pluginFolder` is handed out as the folder that the plug-in lies in.
    HostServices(const StreamFormat& format, std::string pluginFolder);

    // Where the music stands from now on; every field holds and the flags say so. One thread; it
    // never waits.
    void setTime(const VstTimeInfo& time);
    // Whether blocks are being rendered, so that a plug-in may take its time over them.
    void setRendering(bool rendering) { rendering_ = rendering; }
    // Those blocks are heard while they are made, from now on: a plug-in must be in time with them.
    void setLive() { isLive_ = true; }

    // Receives what the user does in the editor; null for none. The listener must live until
    // it is taken off, and no call may be under way then.
    void setEditListener(EditListener* listener) { listener_ = listener; }

    // Ties the record to this instance, for the calls to come.
    void attachTo(AEffect* effect);
    // Those that `effect` is attached to.
    static HostServices& of(const AEffect& effect);

    // The host service entry that plug-ins are given.
    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt) noexcept;

    // While it lives, calls on this thread that name no attached record belong to `services`: a
    // plug-in asks for things before its entry point has returned.
    class ConstructionScope {
    public:
        explicit ConstructionScope(HostServices& services);
        ~ConstructionScope();
        ConstructionScope(const ConstructionScope&) = delete;
        ConstructionScope& operator=(const ConstructionScope&) = delete;
    };

private:
    VstIntPtr handle(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt);
    VstTimeInfo time() const;
    VstInt32 processLevel() const;
    VstIntPtr timeForPlugin(VstInt32 filter) const;
    void tellListener(VstInt32 opcode, VstInt32 index, VstIntPtr value, float opt) const;

    StreamFormat format_;
    std::string pluginFolder_;
    std::atomic<bool> rendering_{false};
    std::atomic<bool> isLive_{false};
    std::atomic<EditListener*> listener_{nullptr};
    // Written on the audio thread, which must not wait: a reader that has met a write reads again.
    // Odd while it is written.
    std::atomic<std::uint32_t> timeVersion_{0};
    std::array<std::atomic<std::uint64_t>, sizeof(VstTimeInfo) / sizeof(std::uint64_t)> time_{};
};

} // namespace zelvatone
