#include "live/jack/JackLibrary.h"

#include "live/FunctionFinder.h"

#include <array>
#include <optional>

namespace zelvatone::jack {

namespace {

// Where PipeWire has its own, which `pw-jack` puts in front of the system's.
constexpr std::array<const char*, 4> kNames{
    "libjack.so.0", "/usr/lib/x86_64-linux-gnu/pipewire-0.3/jack/libjack.so.0",
    "/usr/lib64/pipewire-0.3/jack/libjack.so.0", "/usr/lib/pipewire-0.3/jack/libjack.so.0"};

void beSilent(const char* /*text*/) {}

void findClient(FunctionFinder& finder, Library& functions) {
    finder.find(functions.clientOpen, "jack_client_open");
    finder.find(functions.clientClose, "jack_client_close");
    finder.find(functions.activate, "jack_activate");
    finder.find(functions.deactivate, "jack_deactivate");
    finder.find(functions.getSampleRate, "jack_get_sample_rate");
    finder.find(functions.getBufferSize, "jack_get_buffer_size");
    finder.find(functions.setBufferSize, "jack_set_buffer_size");
    finder.find(functions.setProcessCallback, "jack_set_process_callback");
    finder.find(functions.setXrunCallback, "jack_set_xrun_callback");
    finder.find(functions.onShutdown, "jack_on_shutdown");
    finder.find(functions.setPortRegistrationCallback, "jack_set_port_registration_callback");
    finder.find(functions.setErrorFunction, "jack_set_error_function");
    finder.find(functions.setInfoFunction, "jack_set_info_function");
}

void findPorts(FunctionFinder& finder, Library& functions) {
    finder.find(functions.portRegister, "jack_port_register");
    finder.find(functions.portGetBuffer, "jack_port_get_buffer");
    finder.find(functions.portName, "jack_port_name");
    finder.find(functions.portConnectedTo, "jack_port_connected_to");
    finder.find(functions.portConnected, "jack_port_connected");
    finder.find(functions.portGetLatencyRange, "jack_port_get_latency_range");
    finder.find(functions.getPorts, "jack_get_ports");
    finder.find(functions.connect, "jack_connect");
    finder.find(functions.free, "jack_free");
    finder.find(functions.midiGetEventCount, "jack_midi_get_event_count");
    finder.find(functions.midiEventGet, "jack_midi_event_get");
}

std::optional<Library> loadLibrary(const char* name) {
    void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return std::nullopt;
    }
    Library functions{};
    FunctionFinder finder(library);
    findClient(finder, functions);
    findPorts(finder, functions);
    if (!finder.isComplete()) {
        return std::nullopt;
    }
    // Without a server it would explain itself in many lines.
    functions.setErrorFunction(beSilent);
    functions.setInfoFunction(beSilent);
    return functions;
}

} // namespace

std::vector<Library> loadLibraries() {
    std::vector<Library> libraries;
    for (const char* name : kNames) {
        if (const auto library = loadLibrary(name)) {
            libraries.push_back(*library);
        }
    }
    return libraries;
}

} // namespace zelvatone::jack
