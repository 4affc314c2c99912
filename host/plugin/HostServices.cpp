#include "host/plugin/HostServices.h"

#include "host/plugin/Capabilities.h"
#include "vst2/audioeffect.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace zelvatone {

namespace {

constexpr const char* kHostVendor = "Quillfeather";
constexpr const char* kHostProduct = "zelvatone";

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
    time_.sampleRate = format.sampleRate;
}

void HostServices::attachTo(AEffect* effect) {
    effect->resvd1 = reinterpret_cast<VstIntPtr>(this);
}

void HostServices::setTime(const VstTimeInfo& time) {
    const std::scoped_lock lock(timeMutex_);
    time_ = time;
}

// The flags that come back are those of the fields that were asked for; the transport's own are
// not asked for one by one. Each thread has its own record to read, until it asks again.
VstIntPtr HostServices::timeForPlugin(VstInt32 filter) {
    constexpr VstInt32 kTransport = kVstTransportChanged | kVstTransportPlaying |
                                    kVstTransportCycleActive | kVstTransportRecording;
    thread_local VstTimeInfo given;
    const std::scoped_lock lock(timeMutex_);
    given = time_;
    given.flags &= filter | kTransport;
    return reinterpret_cast<VstIntPtr>(&given);
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
        return rendering_ ? kProcessLevelOffline : kProcessLevelUser;
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
