#include "host/plugin/HostedPlugin.h"

#include "host/Error.h"
#include "host/plugin/PluginText.h"

#include <algorithm>
#include <mutex>

namespace zelvatone {

namespace {

// Hosts make and unmake plug-ins on one thread, and instruments rely on that.
std::mutex lifeMutex;

AEffect* construct(const PluginLibrary& library, HostServices& services) {
    const std::scoped_lock lock(lifeMutex);
    const HostServices::ConstructionScope scope(services);
    AEffect* effect = library.entryPoint()(HostServices::callback);
    if (effect == nullptr) {
        throw InputError(library.path().string() + " refuses to start: it returns no plug-in");
    }
    if (effect->magic != kEffectMagic || effect->dispatcher == nullptr ||
        effect->getParameter == nullptr || effect->setParameter == nullptr) {
        throw InputError(library.path().string() +
                         " is not a plug-in: what it returns lacks the interface's mark");
    }
    return effect;
}

} // namespace

HostedPlugin::HostedPlugin(const PluginLibrary& library, const StreamFormat& format)
    : format_(format),
      path_(library.path().string()),
      services_(format, library.path().parent_path().string()),
      effect_(construct(library, services_)) {
    const std::scoped_lock lock(lifeMutex);
    services_.attachTo(effect_);
    request(effOpen);
    request(effSetSampleRate, 0, 0, nullptr, static_cast<float>(format.sampleRate));
    request(effSetBlockSize, 0, format.blockSize);
}

HostedPlugin::~HostedPlugin() {
    switchOff();
    const std::scoped_lock lock(lifeMutex);
    request(effClose);
}

int HostedPlugin::parameterCount() const {
    return std::max(0, effect_->numParams);
}

int HostedPlugin::programCount() const {
    return std::max(0, effect_->numPrograms);
}

int HostedPlugin::inputCount() const {
    return std::max(0, effect_->numInputs);
}

int HostedPlugin::outputCount() const {
    return std::max(0, effect_->numOutputs);
}

bool HostedPlugin::isInstrument() const {
    return (effect_->flags & effFlagsIsSynth) != 0;
}

VstIntPtr HostedPlugin::request(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                float opt) {
    return effect_->dispatcher(effect_, opcode, index, value, ptr, opt);
}

std::string HostedPlugin::text(VstInt32 opcode, VstInt32 index, VstIntPtr value) {
    return pluginText([&](char* buffer) { request(opcode, index, value, buffer); });
}

float HostedPlugin::parameter(int index) {
    return effect_->getParameter(effect_, index);
}

void HostedPlugin::setParameter(int index, float value) {
    effect_->setParameter(effect_, index, value);
}

void HostedPlugin::switchOn() {
    services_.setRendering(true);
    request(effMainsChanged, 0, 1);
    request(effStartProcess);
    isOn_ = true;
}

void HostedPlugin::switchOff() {
    if (isOn_) {
        request(effStopProcess);
        request(effMainsChanged, 0, 0);
        services_.setRendering(false);
        isOn_ = false;
    }
}

void HostedPlugin::render(const VstTimeInfo& time, VstEvents* events, float** inputs,
                          float** outputs, int frames) {
    services_.setTime(time);
    if (events != nullptr) {
        request(effProcessEvents, 0, 0, events);
    }
    effect_->processReplacing(effect_, inputs, outputs, frames);
}

} // namespace zelvatone
