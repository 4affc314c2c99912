#include "tests/clap/VstInstance.h"

#include "tests/clap/host/ModuleFile.h"

#include <array>
#include <stdexcept>

namespace zelvatone::test {

VstInstance::VstInstance(const std::string& path, float sampleRate) {
    using Entry = AEffect* (*)(audioMasterCallback);
    static void* const kModule = openModule(path);
    if (kModule == nullptr) {
        throw std::runtime_error(path + " cannot be loaded");
    }
    effect_ = reinterpret_cast<Entry>(symbolOf(kModule, "VSTPluginMain"))(host);
    effect_->user = this;
    dispatch(effOpen);
    dispatch(effSetSampleRate, 0, nullptr, sampleRate);
    dispatch(effMainsChanged, 1);
}

VstInstance::~VstInstance() {
    dispatch(effClose);
}

VstIntPtr VstInstance::host(AEffect* effect, VstInt32 opcode, VstInt32 /*index*/,
                            VstIntPtr /*value*/, void* /*ptr*/, float /*opt*/) {
    if (opcode == audioMasterVersion) {
        return kVstVersion;
    }
    if (opcode != audioMasterGetTime) {
        return 0;
    }
    auto& self = *static_cast<VstInstance*>(effect->user);
    self.time_.tempo = self.tempo;
    self.time_.flags = kVstTempoValid;
    return reinterpret_cast<VstIntPtr>(&self.time_);
}

VstIntPtr VstInstance::dispatch(VstInt32 opcode, VstIntPtr value, void* ptr, float opt) {
    return effect_->dispatcher(effect_, opcode, 0, value, ptr, opt);
}

void VstInstance::setProgram(std::int32_t program) {
    dispatch(effSetProgram, program);
}

void VstInstance::setParameter(std::int32_t index, float normalised) {
    effect_->setParameter(effect_, index, normalised);
}

void VstInstance::send(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                       std::int32_t frame) {
    VstMidiEvent event{};
    event.type = kVstMidiType;
    event.byteSize = sizeof event;
    event.deltaFrames = frame;
    event.midiData[0] = static_cast<char>(status);
    event.midiData[1] = static_cast<char>(data1);
    event.midiData[2] = static_cast<char>(data2);
    VstEvents events{1, 0, {reinterpret_cast<VstEvent*>(&event), nullptr}};
    dispatch(effProcessEvents, 0, &events);
}

std::vector<float> VstInstance::play(std::int32_t frames) {
    std::vector<float> left(static_cast<std::size_t>(frames));
    std::vector<float> right(left.size());
    std::array<float*, 2> outputs{left.data(), right.data()};
    effect_->processReplacing(effect_, nullptr, outputs.data(), frames);
    return left;
}

} // namespace zelvatone::test
