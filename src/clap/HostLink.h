// What a CLAP host offers, found once.
#pragma once

#include "clap/abi/Extensions.h"

namespace zelvatone {

// Calls do nothing where the host does not offer them.
class HostLink {
public:
    explicit HostLink(const clap::Host& host) : host_(host) {}

    // Looks for the host's extensions. Main thread, as is all that is not marked; from the
    // plug-in's init on.
    void find();

    // All values may be new, and the session has changed.
    void valuesHaveChanged() const;
    void markDirty() const;
    // The host shall take events of the editor. Any thread but the audio thread.
    void requestFlush() const;
    // The host shall call onMainThread soon. Any thread.
    void requestCallback() const { host_.requestCallback(&host_); }
    // Returns false without timers. `timer`: where its number goes.
    bool startTimer(std::uint32_t periodMs, std::uint32_t& timer) const;
    void stopTimer(std::uint32_t timer) const;

private:
    template<class Extension>
    void findOne(const Extension*& extension, const char* id);

    const clap::Host& host_;
    const clap::HostParams* params_ = nullptr;
    const clap::HostState* state_ = nullptr;
    const clap::HostTimerSupport* timers_ = nullptr;
};

} // namespace zelvatone
