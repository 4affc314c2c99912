// An instrument that takes no memory and makes no system call, whatever it is sent. In each block
// it asks its host for the time and for the process level. Silent.

#include "tests/support/plugins/SmallPlugin.h"
#include "vst2/aeffectx.h"

namespace {

class QuietInstrument final : public SmallPlugin {
public:
    explicit QuietInstrument(audioMasterCallback host) : SmallPlugin(host, true, 1) {}

    VstInt32 processEvents(VstEvents* /*events*/) override { return 1; }
    void processReplacing(float** inputs, float** outputs, VstInt32 frames) override {
        constexpr VstInt32 kEverything = 0x7FFFFFFF;
        getTimeInfo(kEverything);
        audioMaster(&cEffect, audioMasterGetCurrentProcessLevel, 0, 0, nullptr, 0.0F);
        SmallPlugin::processReplacing(inputs, outputs, frames);
    }
};

} // namespace

AEffect* VSTPluginMain(audioMasterCallback host) {
    return (new QuietInstrument(host))->getAeffect();
}
