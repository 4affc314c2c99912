// The functions of the JACK library that are used, loaded at run time: the program starts without.
// Declared here, as they have not changed for many years: a build needs no package of JACK's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone::jack {

struct Client; // the library's own
struct Port;

using Frames = std::uint32_t;
using PortId = std::uint32_t;

enum Option : int { kNoStartServer = 1 };
enum PortFlag : unsigned long { kIsInput = 1, kIsOutput = 2, kIsPhysical = 4, kIsTerminal = 16 };
enum LatencyMode : int { kCaptureLatency = 0, kPlaybackLatency = 1 };

inline constexpr const char* kAudioType = "32 bit float mono audio";
inline constexpr const char* kMidiType = "8 bit raw midi";

struct MidiEvent {
    Frames time; // of the block
    std::size_t size;
    std::uint8_t* bytes;
};

struct LatencyRange {
    Frames min;
    Frames max;
};

using ProcessCallback = int (*)(Frames frames, void* argument);
using XrunCallback = int (*)(void* argument);
using ShutdownCallback = void (*)(void* argument);
using PortCallback = void (*)(PortId port, int isNew, void* argument);
using MessageCallback = void (*)(const char* text);

// Functions of one loaded library.
struct Library {
    Client* (*clientOpen)(const char* name, int options, int* status, ...);
    int (*clientClose)(Client* client);
    int (*activate)(Client* client);
    int (*deactivate)(Client* client);
    Frames (*getSampleRate)(Client* client);
    Frames (*getBufferSize)(Client* client);
    int (*setBufferSize)(Client* client, Frames frames);
    int (*setProcessCallback)(Client* client, ProcessCallback callback, void* argument);
    int (*setXrunCallback)(Client* client, XrunCallback callback, void* argument);
    void (*onShutdown)(Client* client, ShutdownCallback callback, void* argument);
    int (*setPortRegistrationCallback)(Client* client, PortCallback callback, void* argument);
    Port* (*portRegister)(Client* client, const char* name, const char* type, unsigned long flags,
                          unsigned long bufferSize);
    void* (*portGetBuffer)(Port* port, Frames frames);
    const char* (*portName)(const Port* port);
    int (*portConnectedTo)(const Port* port, const char* name);
    int (*portConnected)(const Port* port);
    void (*portGetLatencyRange)(Port* port, int mode, LatencyRange* range);
    const char** (*getPorts)(Client* client, const char* namePattern, const char* typePattern,
                             unsigned long flags);
    int (*connect)(Client* client, const char* source, const char* target);
    void (*free)(void* memory);
    std::uint32_t (*midiGetEventCount)(void* buffer);
    int (*midiEventGet)(MidiEvent* event, void* buffer, std::uint32_t index);
    void (*setErrorFunction)(MessageCallback callback);
    void (*setInfoFunction)(MessageCallback callback);
};

// The libraries that are installed: the server's own, then PipeWire's, which stands beside it under
// the same name. They stay loaded.
std::vector<Library> loadLibraries();

} // namespace zelvatone::jack
