#include "live/BackendChoice.h"

#include "host/Error.h"
#include "host/text/Format.h"
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
    auto jack = std::make_unique<JackBackend>(choice);
    if (!jack->isOpen()) {
        throw InputError("there is no sound system to play on: start PipeWire or jackd");
    }
    return jack;
}

std::string deviceList() {
    std::string text;
    if (const JackBackend jack({}); jack.isOpen()) {
        text += listText("JACK", jack.devices());
    }
    return text.empty() ? "no sound system runs here: start PipeWire or jackd\n" : text;
}

} // namespace zelvatone
