// An instrument whose texts are longer than the interface allows, are no UTF-8 and hold control
// characters, and which prints whatever it is asked.

#include "tests/support/plugins/SmallPlugin.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

class BabblingInstrument final : public SmallPlugin {
public:
    explicit BabblingInstrument(audioMasterCallback host) : SmallPlugin(host, true, 2) {}

    void getParameterName(VstInt32 index, char* text) override {
        std::printf("{\"babble\": %d}\n", index);
        const std::string name = index == 0 ? "A name of far more than eight letters"
                                            : "Temp \xB0"
                                              "C";
        std::memcpy(text, name.c_str(), name.size() + 1);
    }
    void getParameterDisplay(VstInt32 /*index*/, char* text) override {
        const std::string display = "\x1B[31mred\n\"quoted\"";
        std::memcpy(text, display.c_str(), display.size() + 1);
    }
    bool getVendorString(char* text) override {
        std::fputs("babble without a line end", stdout);
        std::memset(text, 'v', 200);
        text[200] = '\0';
        return true;
    }
};

} // namespace

AEffect* VSTPluginMain(audioMasterCallback host) {
    std::puts("babble");
    return (new BabblingInstrument(host))->getAeffect();
}
