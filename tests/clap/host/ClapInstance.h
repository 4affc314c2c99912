// An instance of a CLAP plug-in, and the host that it lives in.
#pragma once

#include "clap/abi/Extensions.h"
#include "tests/clap/host/ClapLibrary.h"
#include "tests/clap/host/EventList.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace zelvatone::test {

// Keeps to the rules of threads: what belongs to the audio thread runs on a thread of its own, and
// calls of the plug-in on the wrong thread are written down. One thread uses an instance.
class ClapInstance {
public:
    enum class Timers { kThere, kNone };

    // Creates and inits the plug-in `id`; the library outlives it. Throws std::runtime_error if the
    // plug-in refuses.
    ClapInstance(const ClapLibrary& library, const char* id, Timers timers = Timers::kThere);
    // Stops, deactivates and destroys.
    ~ClapInstance();
    ClapInstance(const ClapInstance&) = delete;
    ClapInstance& operator=(const ClapInstance&) = delete;

    const clap::Plugin& plugin() const { return *plugin_; }

    // The plug-in's extension; null without it.
    template<class Extension>
    const Extension* extension(const char* id) const {
        return static_cast<const Extension*>(plugin_->getExtension(plugin_, id));
    }

    void activate(double sampleRate, std::uint32_t mostFrames);
    void deactivate();
    bool isActive() const { return isActive_; }

    // Sound of the first output port, by channel.
    using Sound = std::vector<std::vector<float>>;
    // Plays one block of an active plug-in, starting it first if need be. `inputs` go to the
    // plug-in, what it sends to `sent`. `status`: what it returned, if not null.
    Sound play(std::uint32_t frames, const InputList& inputs, OutputList& sent,
               const clap::TransportEvent* transport = nullptr,
               clap::ProcessStatus* status = nullptr);
    // Runs `action` on the audio thread.
    static void onAudioThread(const std::function<void()>& action);

    // Calls onMainThread if the plug-in has asked for it. Returns whether it had.
    bool runCallbacks();
    // Fires all timers once.
    void fireTimers();

    // What the plug-in has asked of the host.
    std::uint32_t rescans = 0; // flags of all
    int dirtyMarks = 0;
    std::atomic<int> flushRequests = 0;
    std::vector<std::string> faults; // against the rules, a sentence each

private:
    static ClapInstance& of(const clap::Host* host) {
        return *static_cast<ClapInstance*>(host->hostData);
    }
    static const void* hostExtension(const clap::Host* host, const char* id);
    void expectMainThread(const char* call);

    static const clap::HostParams kParams;
    static const clap::HostState kState;
    static const clap::HostTimerSupport kTimers;
    static const clap::HostThreadCheck kThreads;

    clap::Host host_;
    const clap::Plugin* plugin_ = nullptr;
    std::vector<std::uint32_t> inputChannels_, outputChannels_; // by port
    std::atomic<bool> wantsCallback_ = false;
    std::set<std::uint32_t> timers_;
    std::uint32_t nextTimer_ = 1;
    std::uint32_t mostFrames_ = 0;
    const bool hasTimers_;
    bool isActive_ = false;
    bool isStarted_ = false;
};

} // namespace zelvatone::test
