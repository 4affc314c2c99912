// An instrument whose sound is one sample: each note-on puts its velocity / 128 times the level
// into the left output and its note / 128 into the right one, at the event's own offset.

#include "tests/support/plugins/PulseLog.h"
#include "vst2/audioeffectx.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kParameters = 3;
const char* const kNames[kParameters] = {"Level", "Shift In", "Spare"};

class PulseInstrument final : public AudioEffectX {
public:
    PulseInstrument(audioMasterCallback host, VstIntPtr hostVersion)
        : AudioEffectX(host, 1, kParameters) {
        std::puts("pulse: a diagnostic line on standard output");
        log_.versionBeforeRecord = hostVersion;
        log_.rateInConstruction = host(&cEffect, audioMasterGetSampleRate, 0, 0, nullptr, 0.0F);
        const VstTimeInfo* time = getTimeInfo(kVstTempoValid);
        log_.timeFlagsInConstruction = time == nullptr ? -1 : time->flags;
        setNumInputs(0);
        setNumOutputs(2);
        setUniqueID(vstFourCharacters('p', 'u', 'l', 's'));
        canProcessReplacing();
        isSynth();
    }

    VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                         float opt) override {
        if (opcode == effVendorSpecific && index == kPulseLogRequest) {
            return reinterpret_cast<VstIntPtr>(&log_);
        }
        note(opcode, value, opt);
        return AudioEffectX::dispatcher(opcode, index, value, ptr, opt);
    }

    void setParameter(VstInt32 index, float value) override { values_[index] = value; }
    float getParameter(VstInt32 index) override { return values_[index]; }
    void getParameterName(VstInt32 index, char* text) override {
        vstCopyText(text, kNames[index], kVstMaxParamStrLen);
    }
    void getParameterDisplay(VstInt32 index, char* text) override {
        std::snprintf(text, 9, "%.2f", static_cast<double>(values_[index]));
    }
    bool getEffectName(char* text) override {
        vstCopyText(text, "Pulse", kVstMaxEffectNameLen);
        return true;
    }

    VstInt32 processEvents(VstEvents* events) override {
        VstEvent** entries = events->events;
        for (VstInt32 i = 0; i < events->numEvents; ++i) {
            take(entries[i]);
        }
        return 1;
    }

    void processReplacing(float** /*inputs*/, float** outputs, VstInt32 frames) override {
        constexpr VstInt32 everything = 0x7FFFFFFF;
        log_.times.push_back(*getTimeInfo(everything));
        log_.processLevels.push_back(
            audioMaster(&cEffect, audioMasterGetCurrentProcessLevel, 0, 0, nullptr, 0.0F));
        std::fill_n(outputs[0], frames, 0.0F);
        std::fill_n(outputs[1], frames, 0.0F);
        for (const PulseEvent& pulse : due_) {
            outputs[0][pulse.offset] += static_cast<float>(pulse.bytes[2]) / 128.0F * values_[0];
            outputs[1][pulse.offset] += static_cast<float>(pulse.bytes[1]) / 128.0F;
        }
        due_.clear();
        ++block_;
    }

private:
    void note(VstInt32 opcode, VstIntPtr value, float opt) {
        if (opcode == effSetSampleRate) {
            log_.requests.push_back("rate " + std::to_string(static_cast<int>(opt)));
        } else if (opcode == effSetBlockSize) {
            log_.requests.push_back("block " + std::to_string(value));
        } else if (opcode == effMainsChanged) {
            log_.requests.emplace_back(value != 0 ? "on" : "off");
        } else if (opcode == effOpen) {
            log_.requests.emplace_back("open");
        }
    }

    void take(const VstEvent* event) {
        PulseEvent seen{block_, event->deltaFrames, {}};
        if (event->type == kVstMidiType) {
            const auto* midi = reinterpret_cast<const VstMidiEvent*>(event);
            seen.bytes.assign(midi->midiData, midi->midiData + 3);
            if ((seen.bytes[0] & 0xF0) == 0x90 && seen.bytes[2] != 0) {
                due_.push_back(seen);
            }
        } else if (event->type == kVstSysExType) {
            const auto* dump = reinterpret_cast<const VstMidiSysexEvent*>(event);
            seen.bytes.assign(dump->sysexDump, dump->sysexDump + dump->dumpBytes);
        }
        log_.events.push_back(seen);
    }

    PulseLog log_;
    float values_[kParameters] = {1.0F, 0.5F, 0.0F};
    long long block_ = 0;
    std::vector<PulseEvent> due_;
};

} // namespace

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback host) {
    const VstIntPtr version = host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0F);
    return version == 0 ? nullptr : (new PulseInstrument(host, version))->getAeffect();
}
