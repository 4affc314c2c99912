#include "tests/editor/PluginHost.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace zelvatone::test {
namespace {

using PluginMain = AEffect* (*)(audioMasterCallback);

// The library stays loaded until the process ends.
PluginMain pluginMain() {
    static void* library = dlopen(ZELVATONE_MODULE, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return reinterpret_cast<PluginMain>(dlsym(library, "VSTPluginMain"));
}

} // namespace

Plugin::Plugin() : effect(pluginMain()(callback)) {
    effect->user = this;
    dispatch(effOpen);
    dispatch(effMainsChanged, 1);
}

Plugin::~Plugin() {
    dispatch(effClose);
}

VstIntPtr Plugin::dispatch(VstInt32 opcode, VstIntPtr value, void* ptr) {
    return effect->dispatcher(effect, opcode, 0, value, ptr, 0.F);
}

VstIntPtr Plugin::callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr, void*,
                           float opt) {
    if (opcode == audioMasterVersion) {
        return kVstVersion;
    }
    auto* self = effect == nullptr ? nullptr : static_cast<Plugin*>(effect->user);
    const bool isEdit = opcode == audioMasterAutomate || opcode == audioMasterBeginEdit ||
                        opcode == audioMasterEndEdit;
    if (self == nullptr || !isEdit) {
        return 0;
    }
    const HostCall call{opcode, index, opt};
    self->calls.push_back(call);
    if (self->onCall) {
        self->onCall(call);
    }
    return 1;
}

std::vector<HostCall> Plugin::callsOf(VstInt32 opcode) const {
    std::vector<HostCall> found;
    std::ranges::copy_if(calls, std::back_inserter(found),
                         [=](const HostCall& call) { return call.opcode == opcode; });
    return found;
}

std::string Plugin::parameterDisplay(VstInt32 index) {
    std::array<char, 64> text{};
    effect->dispatcher(effect, effGetParamDisplay, index, 0, text.data(), 0.F);
    return text.data();
}

void Plugin::render() {
    constexpr VstInt32 kBlock = 256;
    if (blocks++ % 50 == 0) {
        VstMidiEvent note{};
        note.type = kVstMidiType;
        note.byteSize = sizeof note;
        note.midiData[0] = static_cast<char>(0x90);
        note.midiData[1] = 57;
        note.midiData[2] = 100;
        VstEvents events{1, 0, {reinterpret_cast<VstEvent*>(&note), nullptr}};
        dispatch(effProcessEvents, 0, &events);
    }
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
    std::array<float*, 2> outputs{left.data(), right.data()};
    effect->processReplacing(effect, nullptr, outputs.data(), kBlock);
}

} // namespace zelvatone::test
