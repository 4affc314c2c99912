// An instrument whose output is NaN on the left and far too loud on the right.

#include "tests/support/plugins/SmallPlugin.h"

#include <limits>

namespace {

class BrokenInstrument final : public SmallPlugin {
public:
    explicit BrokenInstrument(audioMasterCallback host) : SmallPlugin(host, true) {}

    void processReplacing(float** /*inputs*/, float** outputs, VstInt32 frames) override {
        std::fill_n(outputs[0], frames, std::numeric_limits<float>::quiet_NaN());
        std::fill_n(outputs[1], frames, -2.0F);
    }
};

} // namespace

AEffect* VSTPluginMain(audioMasterCallback host) {
    return (new BrokenInstrument(host))->getAeffect();
}
