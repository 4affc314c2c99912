#include "host/plugin/HostServices.h"

#include "host/plugin/Capabilities.h"
#include "vst2/audioeffect.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <tuple>
#include <utility>

namespace zelvatone {

namespace {

constexpr const char* kHostVendor = "Quillfeather";
constexpr const char* kHostProduct = "zelvatone";

constexpr VstInt32 kProcessLevelRealtime = 2;

thread_local HostServices* underConstruction = nullptr;

VstIntPtr writeText(void* target, const char* text, int length) {
    if (target == nullptr) {
        return 0;
    }
    vstCopyText(static_cast<char*>(target), text, length - 1); // within `length` all in all
    return 1;
}

// 0 and not -1 for no: plug-ins take everything but 0 for a yes.
VstIntPtr canDoAsHost(const char* text) {
    const bool can =
        text != nullptr && std::find(kHostCapabilities.begin(), kHostCapabilities.end(),
                                     std::string_view(text)) != kHostCapabilities.end();
    return can ? 1 : 0;
}

// What holds for every instance, and before there is one.
VstIntPtr handleAsHost(VstInt32 opcode, void* ptr) {
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterGetVendorString:
        return writeText(ptr, kHostVendor, kVstMaxVendorStrLen);
    case audioMasterGetProductString:
        return writeText(ptr, kHostProduct, kVstMaxProductStrLen);
    case audioMasterGetVendorVersion:
        return ZELVATONE_VERSION_NUMBER;
    case audioMasterCanDo:
        return canDoAsHost(static_cast<const char*>(ptr));
    case audioMasterGetLanguage:
        return kLanguageEnglish;
    case audioMasterGetAutomationState:
        return kAutomationOff;
    case audioMasterWantMidi: // it is sent in any case
    case audioMasterAutomate: // a listener has heard of it, where there is one
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
    case audioMasterUpdateDisplay:
        return 1;
    default: // what is not known, and latencies, which are none
        return 0;
    }
}

} // namespace

HostServices::ConstructionScope::ConstructionScope(HostServices& services) {
    underConstruction = &services;
}

HostServices::ConstructionScope::~ConstructionScope() {
    underConstruction = nullptr;
}

HostServices::HostServices(const StreamFormat& format, std::string pluginFolder)
    : format_(format), pluginFolder_(std::move(pluginFolder)) {
    VstTimeInfo time{};
    time.sampleRate = format.sampleRate;
    setTime(time);
}

void HostServices::attachTo(AEffect* effect) {
    effect->resvd1 = reinterpret_cast<VstIntPtr>(this);
}

HostServices& HostServices::of(const AEffect& effect) {
    return *reinterpret_cast<HostServices*>(effect.resvd1);
}

void HostServices::setTime(const VstTimeInfo& time) {
    using Words = std::array<std::uint64_t, std::tuple_size_v<decltype(time_)>>;
    static_assert(sizeof(Words) == sizeof time);
    const auto words = std::bit_cast<Words>(time);
    const std::uint32_t version = timeVersion_.load(std::memory_order_relaxed);
    timeVersion_.store(version + 1, std::memory_order_relaxed);
    for (std::size_t i = 0; i < words.size(); ++i) {
        time_[i].store(words[i], std::memory_order_release); // not before the odd version
    }
    timeVersion_.store(version + 2, std::memory_order_release);
}

VstTimeInfo HostServices::time() const {
    std::array<std::uint64_t, std::tuple_size_v<decltype(time_)>> words{};
    while (true) {
        const std::uint32_t before = timeVersion_.load(std::memory_order_acquire);
        for (std::size_t i = 0; i < words.size(); ++i) {
            words[i] = time_[i].load(std::memory_order_acquire); // not after the second look
        }
        if (before % 2 == 0 && timeVersion_.load(std::memory_order_relaxed) == before) {
            return std::bit_cast<VstTimeInfo>(words);
        }
    }
}

// The flags that come back are those of the fields that were asked for; the transport's own are
// not asked for one by one. Each thread has its own record to read, until it asks again.
VstIntPtr HostServices::timeForPlugin(VstInt32 filter) const {
    constexpr VstInt32 kTransport = kVstTransportChanged | kVstTransportPlaying |
                                    kVstTransportCycleActive | kVstTransportRecording;
    thread_local VstTimeInfo given;
    given = time();
    given.flags &= filter | kTransport;
    return reinterpret_cast<VstIntPtr>(&given);
}

VstInt32 HostServices::processLevel() const {
    if (!rendering_) {
        return kProcessLevelUser;
    }
    return isLive_ ? kProcessLevelRealtime : kProcessLevelOffline;
}

void HostServices::tellListener(VstInt32 opcode, VstInt32 index, VstIntPtr value, float opt) const {
    EditListener* listener = listener_;
    if (listener == nullptr) {
        return;
    }
    switch (opcode) {
    case audioMasterBeginEdit:
        listener->onBeginEdit(index);
        break;
    case audioMasterAutomate:
        listener->onAutomate(index, opt);
        break;
    case audioMasterEndEdit:
        listener->onEndEdit(index);
        break;
    case audioMasterSizeWindow:
        if (index > 0 && value > 0) {
            listener->onSizeWindow(index, static_cast<int>(value));
        }
        break;
    default:
        break;
    }
}

VstIntPtr HostServices::handle(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) {
    tellListener(opcode, index, value, opt);
    switch (opcode) {
    case audioMasterGetTime:
        return timeForPlugin(static_cast<VstInt32>(value));
    case audioMasterGetSampleRate:
        return static_cast<VstIntPtr>(format_.sampleRate);
    case audioMasterGetBlockSize:
        return format_.blockSize;
    case audioMasterGetCurrentProcessLevel:
        return processLevel();
    case audioMasterGetDirectory:
        return reinterpret_cast<VstIntPtr>(pluginFolder_.c_str());
    case audioMasterSizeWindow:
        return index > 0 && value > 0 ? 1 : 0;
    default:
        return handleAsHost(opcode, ptr);
    }
}

VstIntPtr HostServices::callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                 void* ptr, float opt) noexcept {
    HostServices* services = underConstruction;
    if (services == nullptr && effect != nullptr) {
        services = reinterpret_cast<HostServices*>(effect->resvd1);
    }
    return services == nullptr ? handleAsHost(opcode, ptr)
                               : services->handle(opcode, index, value, ptr, opt);
}

} // namespace zelvatone
