#include "live/BackendChoice.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "live/jack/JackBackend.h"

#include <string_view>

namespace zelvatone {

namespace {

constexpr std::string_view kJack = "jack:";
constexpr std::string_view kAlsa = "alsa:";

bool startsWith(const std::optional<std::string>& output, std::string_view system) {
    return output && output->starts_with(system);
}

DeviceChoice without(std::string_view system, DeviceChoice choice) {
    if (startsWith(choice.output, system)) {
        choice.output->erase(0, system.size());
        if (choice.output->empty()) {
            choice.output.reset();
        }
    }
    return choice;
}

std::string listText(std::string_view system, const AudioDevices& devices) {
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
    if (!startsWith(choice.output, kAlsa)) {
        auto jack = std::make_unique<JackBackend>(without(kJack, choice));
        if (jack->isOpen()) {
            return jack;
        }
        if (startsWith(choice.output, kJack)) {
            throw InputError("no JACK server runs: start PipeWire or jackd");
        }
    }
    throw InputError("there is no sound system to play on: start PipeWire or jackd");
}

std::string deviceList() {
    std::string text;
    if (const JackBackend jack({}); jack.isOpen()) {
        text += listText("JACK", jack.devices());
    }
    return text.empty() ? "no sound system runs here: start PipeWire or jackd\n" : text;
}

} // namespace zelvatone
