#include "live/BackendChoice.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "live/alsa/AlsaBackend.h"
#include "live/jack/JackBackend.h"

namespace zelvatone {

namespace {

std::string listText(const char* system, const AudioDevices& devices) {
    std::string text;
    for (const std::string& output : devices.outputs) {
        text += formatText("{} output  {}\n", system, output);
    }
    for (const std::string& input : devices.inputs) {
        text += formatText("{} input   {}\n", system, input);
    }
    return text;
}

} // namespace

std::unique_ptr<AudioBackend> openBackend(const DeviceChoice& choice) {
    if (auto jack = std::make_unique<JackBackend>(choice); jack->isOpen()) {
        return jack;
    }
    if (const auto library = alsa::loadLibrary()) {
        if (auto alsa = std::make_unique<AlsaBackend>(*library, choice); alsa->isOpen()) {
            return alsa;
        }
    }
    throw InputError("there is no sound system to play on: start PipeWire or jackd, or plug in a "
                     "sound card");
}

std::string deviceList() {
    std::string text;
    if (const JackBackend jack({}); jack.isOpen()) {
        text = listText("JACK", jack.devices());
    } else if (const auto library = alsa::loadLibrary()) {
        text = listText("ALSA", AlsaBackend::devices(*library));
    }
    return text.empty() ? "no sound system runs here: start PipeWire or jackd, or plug in a sound "
                          "card\n"
                        : text;
}

} // namespace zelvatone
