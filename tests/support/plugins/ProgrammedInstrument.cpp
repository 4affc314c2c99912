// An instrument of four programs that tells the name of the current one only. Each program has a
// level of its own; each note-on puts that level into both outputs, at the event's own offset. Its
// second parameter comes in hundredths and rounds down, so that some of the values it reports land
// a step lower when they are set again; the third one rounds down to quarters.

#include "tests/support/plugins/SmallPlugin.h"
#include "vst2/aeffectx.h"

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace {

constexpr int kPrograms = 4;

class ProgrammedInstrument final : public AudioEffectX {
public:
    explicit ProgrammedInstrument(audioMasterCallback host) : AudioEffectX(host, kPrograms, 3) {
        setNumInputs(0);
        setNumOutputs(2);
        setUniqueID(vstFourCharacters('p', 'r', 'o', 'g'));
        canProcessReplacing();
        isSynth();
    }

    void getProgramName(char* name) override {
        vstCopyText(name, names_[program()].c_str(), kVstMaxProgNameLen);
    }
    void setProgramName(char* name) override { names_[program()] = name; }

    void setParameter(VstInt32 index, float value) override {
        const float steps = index == 1 ? 100.0F : 4.0F;
        values_[program()][index] = index == 0 ? value : std::floor(steps * value) / steps;
    }
    float getParameter(VstInt32 index) override { return values_[program()][index]; }
    void getParameterName(VstInt32 index, char* text) override {
        static constexpr std::array names{"Level", "Percent", "Quarter"};
        vstCopyText(text, names[index], kVstMaxParamStrLen);
    }

    VstInt32 processEvents(VstEvents* events) override {
        VstEvent** entries = events->events;
        for (VstInt32 i = 0; i < events->numEvents; ++i) {
            const auto* midi = reinterpret_cast<const VstMidiEvent*>(entries[i]);
            if (midi->type == kVstMidiType && (midi->midiData[0] & 0xF0) == 0x90) {
                due_.push_back(midi->deltaFrames);
            }
        }
        return 1;
    }

    void processReplacing(float** /*inputs*/, float** outputs, VstInt32 frames) override {
        std::fill_n(outputs[0], frames, 0.0F);
        std::fill_n(outputs[1], frames, 0.0F);
        for (const VstInt32 offset : due_) {
            outputs[0][offset] += values_[program()][0];
            outputs[1][offset] += values_[program()][0];
        }
        due_.clear();
    }

private:
    std::size_t program() const { return static_cast<std::size_t>(curProgram); }

    std::array<std::string, kPrograms> names_{"Low", "High", "High Low", "Up/Down"};
    std::array<std::array<float, 3>, kPrograms> values_{
        {{0.125F, 0.0F, 0.0F}, {0.5F, 0.0F, 0.5F}, {0.25F, 0.2F, 0.5F}, {0.3F, 1.0F, 1.0F}}};
    std::vector<VstInt32> due_;
};

} // namespace

AEffect* VSTPluginMain(audioMasterCallback host) {
    return (new ProgrammedInstrument(host))->getAeffect();
}
