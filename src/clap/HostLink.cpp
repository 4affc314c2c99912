#include "clap/HostLink.h"

namespace zelvatone {

template<class Extension>
void HostLink::findOne(const Extension*& extension, const char* id) {
    extension = static_cast<const Extension*>(host_.getExtension(&host_, id));
}

void HostLink::find() {
    findOne(params_, clap::kParamsId);
    findOne(state_, clap::kStateId);
    findOne(timers_, clap::kTimerSupportId);
}

void HostLink::valuesHaveChanged() const {
    if (params_ != nullptr) {
        params_->rescan(&host_, clap::kRescanValues);
    }
}

void HostLink::markDirty() const {
    if (state_ != nullptr) {
        state_->markDirty(&host_);
    }
}

void HostLink::requestFlush() const {
    if (params_ != nullptr) {
        params_->requestFlush(&host_);
    }
}

bool HostLink::startTimer(std::uint32_t periodMs, std::uint32_t& timer) const {
    return timers_ != nullptr && timers_->registerTimer(&host_, periodMs, &timer);
}

void HostLink::stopTimer(std::uint32_t timer) const {
    if (timers_ != nullptr) {
        timers_->unregisterTimer(&host_, timer);
    }
}

} // namespace zelvatone
