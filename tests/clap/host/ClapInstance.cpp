#include "tests/clap/host/ClapInstance.h"

#include <stdexcept>
#include <string_view>
#include <thread>

namespace zelvatone::test {

namespace {

thread_local bool isAudio = false;

// The channels of each port on one side.
std::vector<std::uint32_t> channelsOf(const clap::Plugin& plugin,
                                      const clap::PluginAudioPorts* ports, bool isInput) {
    std::vector<std::uint32_t> channels;
    const std::uint32_t count = ports == nullptr ? 0 : ports->count(&plugin, isInput);
    for (std::uint32_t i = 0; i < count; ++i) {
        clap::AudioPortInfo info{};
        channels.push_back(ports->get(&plugin, i, isInput, &info) ? info.channelCount : 0);
    }
    return channels;
}

// The memory of all ports on one side.
class Ports {
public:
    Ports(const std::vector<std::uint32_t>& channels, std::uint32_t frames) {
        sounds_.reserve(channels.size());
        pointers_.reserve(channels.size());
        for (const std::uint32_t count : channels) {
            sounds_.emplace_back(count, std::vector<float>(frames, 0.0F));
            pointers_.emplace_back();
            for (std::vector<float>& channel : sounds_.back()) {
                pointers_.back().push_back(channel.data());
            }
            buffers.push_back({.data32 = pointers_.back().data(),
                               .data64 = nullptr,
                               .channelCount = count,
                               .latency = 0,
                               .constantMask = 0});
        }
    }
    ClapInstance::Sound first() const {
        return sounds_.empty() ? ClapInstance::Sound() : sounds_.front();
    }

    std::vector<clap::AudioBuffer> buffers;

private:
    std::vector<ClapInstance::Sound> sounds_;
    std::vector<std::vector<float*>> pointers_;
};

} // namespace

const clap::HostParams ClapInstance::kParams{
    .rescan =
        [](const clap::Host* host, std::uint32_t flags) {
            of(host).expectMainThread("rescan");
            of(host).rescans |= flags;
        },
    .clear = [](const clap::Host* host, std::uint32_t,
                std::uint32_t) { of(host).expectMainThread("clear"); },
    .requestFlush =
        [](const clap::Host* host) {
            if (isAudio) {
                of(host).faults.emplace_back("request_flush was called on the audio thread");
            }
            ++of(host).flushRequests;
        }};

const clap::HostState ClapInstance::kState{.markDirty = [](const clap::Host* host) {
    of(host).expectMainThread("mark_dirty");
    ++of(host).dirtyMarks;
}};

const clap::HostTimerSupport ClapInstance::kTimers{
    .registerTimer =
        [](const clap::Host* host, std::uint32_t, std::uint32_t* timer) {
            of(host).expectMainThread("register_timer");
            *timer = of(host).nextTimer_++;
            of(host).timers_.insert(*timer);
            return true;
        },
    .unregisterTimer =
        [](const clap::Host* host, std::uint32_t timer) {
            of(host).expectMainThread("unregister_timer");
            return of(host).timers_.erase(timer) != 0;
        }};

const clap::HostThreadCheck ClapInstance::kThreads{
    .isMainThread = [](const clap::Host*) { return !isAudio; },
    .isAudioThread = [](const clap::Host*) { return isAudio; }};

const void* ClapInstance::hostExtension(const clap::Host* host, const char* id) {
    const std::string_view name = id;
    if (name == clap::kParamsId) {
        return &kParams;
    }
    if (name == clap::kStateId) {
        return &kState;
    }
    if (name == clap::kThreadCheckId) {
        return &kThreads;
    }
    return name == clap::kTimerSupportId && of(host).hasTimers_ ? &kTimers : nullptr;
}

ClapInstance::ClapInstance(const ClapLibrary& library, const char* id, Timers timers)
    : host_{.version = clap::kVersion,
            .hostData = this,
            .name = "clap_checker",
            .vendor = "Quillfeather",
            .url = "",
            .hostVersion = "1",
            .getExtension = hostExtension,
            .requestRestart = [](const clap::Host*) {},
            .requestProcess = [](const clap::Host*) {},
            .requestCallback = [](const clap::Host* host) { of(host).wantsCallback_ = true; }},
      hasTimers_(timers == Timers::kThere) {
    const clap::PluginFactory* factory = library.factory();
    plugin_ = factory == nullptr ? nullptr : factory->createPlugin(factory, &host_, id);
    if (plugin_ == nullptr || !plugin_->init(plugin_)) {
        throw std::runtime_error(std::string(id) + " cannot be created");
    }
    const auto* ports = extension<clap::PluginAudioPorts>(clap::kAudioPortsId);
    inputChannels_ = channelsOf(*plugin_, ports, true);
    outputChannels_ = channelsOf(*plugin_, ports, false);
}

ClapInstance::~ClapInstance() {
    deactivate();
    plugin_->destroy(plugin_);
}

void ClapInstance::expectMainThread(const char* call) {
    if (isAudio) {
        faults.push_back(std::string(call) + " was called on the audio thread");
    }
}

void ClapInstance::activate(double sampleRate, std::uint32_t mostFrames) {
    if (!plugin_->activate(plugin_, sampleRate, 1, mostFrames)) {
        throw std::runtime_error("the plug-in cannot be activated");
    }
    mostFrames_ = mostFrames;
    isActive_ = true;
}

void ClapInstance::deactivate() {
    if (isStarted_) {
        onAudioThread([this] { plugin_->stopProcessing(plugin_); });
        isStarted_ = false;
    }
    if (isActive_) {
        plugin_->deactivate(plugin_);
        isActive_ = false;
    }
}

ClapInstance::Sound ClapInstance::play(std::uint32_t frames, const InputList& inputs,
                                       OutputList& sent, const clap::TransportEvent* transport,
                                       clap::ProcessStatus* status) {
    if (frames > mostFrames_) {
        throw std::runtime_error("a block is longer than the plug-in was told");
    }
    Ports in(inputChannels_, frames);
    Ports out(outputChannels_, frames);
    const clap::Process process{.steadyTime = -1,
                                .frameCount = frames,
                                .transport = transport,
                                .audioInputs = in.buffers.data(),
                                .audioOutputs = out.buffers.data(),
                                .audioInputCount = static_cast<std::uint32_t>(in.buffers.size()),
                                .audioOutputCount = static_cast<std::uint32_t>(out.buffers.size()),
                                .inEvents = &inputs.record(),
                                .outEvents = &sent.record()};
    const std::size_t sentBefore = sent.events.size();
    clap::ProcessStatus result = clap::kProcessError;
    onAudioThread([&] {
        if (!isStarted_) {
            isStarted_ = plugin_->startProcessing(plugin_);
        }
        result = plugin_->process(plugin_, &process);
    });
    if (result == clap::kProcessError) {
        faults.emplace_back("process returned an error");
    }
    if (!sent.isSorted(sentBefore)) {
        faults.emplace_back("events were sent out of order");
    }
    if (status != nullptr) {
        *status = result;
    }
    return out.first();
}

void ClapInstance::onAudioThread(const std::function<void()>& action) {
    std::thread([&action] {
        isAudio = true;
        action();
    }).join();
}

bool ClapInstance::runCallbacks() {
    if (!wantsCallback_.exchange(false)) {
        return false;
    }
    plugin_->onMainThread(plugin_);
    return true;
}

void ClapInstance::fireTimers() {
    const auto* timers = extension<clap::PluginTimerSupport>(clap::kTimerSupportId);
    for (const std::uint32_t timer : std::set(timers_)) {
        if (timers != nullptr && timers_.contains(timer)) {
            timers->onTimer(plugin_, timer);
        }
    }
}

} // namespace zelvatone::test
