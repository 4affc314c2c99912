// An instrument whose texts are longer than the interface allows, are no UTF-8 and hold control
// characters, and which prints whatever it is asked.

#include "SmallPlugin.h"

#include <cstdio>
#include <cstring>

namespace {

class BabblingInstrument final : public SmallPlugin {
public:
    explicit BabblingInstrument(audioMasterCallback host) : SmallPlugin(host, true, 2) {}

    void getParameterName(VstInt32 index, char* text) override {
        std::printf("{\"babble\": %d}\n", index);
        std::strcpy(text, index == 0 ? "A name of far more than eight letters"
                                     : "Temp \xB0"
                                       "C");
    }
    void getParameterDisplay(VstInt32 /*index*/, char* text) override {
        std::strcpy(text, "\x1B[31mred\n\"quoted\"");
    }
    bool getVendorString(char* text) override {
        std::fputs("babble without a line end", stdout);
        std::memset(text, 'v', 200);
        text[200] = '\0';
        return true;
    }
};

} // namespace

TEST_ENTRY_POINT(audioMasterCallback host) {
    std::puts("babble");
    return (new BabblingInstrument(host))->getAeffect();
}
