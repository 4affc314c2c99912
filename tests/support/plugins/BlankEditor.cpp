// An instrument whose editor draws nothing: it shows what a host makes of what an editor asks for.
// Wants its window larger after three turns, and says that the user moves its only parameter, and
// two more that there are not.

#include "tests/support/plugins/SmallPlugin.h"
#include "vst2/aeffeditor.h"

namespace {

class BlankEditor final : public AEffEditor {
public:
    explicit BlankEditor(AudioEffectX& plugin) : plugin(plugin) {}

    bool getRect(ERect** rect) override {
        *rect = &rectangle;
        return true;
    }
    bool open(void* window) override {
        systemWindow = window;
        return true;
    }
    void idle() override {
        if (++turns == 3) {
            plugin.sizeWindow(320, 200);
            plugin.setParameterAutomated(-1, 0.5F);
            plugin.setParameterAutomated(1, 0.5F);
        }
    }

private:
    AudioEffectX& plugin;
    ERect rectangle{0, 0, 100, 160}; // top, left, bottom, right
    int turns = 0;
};

} // namespace

AEffect* VSTPluginMain(audioMasterCallback host) {
    auto* plugin = new SmallPlugin(host, true);
    plugin->setEditor(new BlankEditor(*plugin));
    return plugin->getAeffect();
}
