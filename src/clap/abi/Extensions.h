// The records of the CLAP extensions that we speak, by their names. See Plugin.h.
#pragma once

#include "clap/abi/Plugin.h"

#include <cstddef>
#include <cstdint>

namespace zelvatone::clap {

inline constexpr std::size_t kNameSize = 256; // bytes of a name, with its zero
inline constexpr std::size_t kPathSize = 1024;
inline constexpr std::uint32_t kInvalidId = UINT32_MAX;

// Audio ports.

inline constexpr char kAudioPortsId[] = "clap.audio-ports";
inline constexpr char kStereoPort[] = "stereo";
inline constexpr std::uint32_t kAudioPortIsMain = 1U << 0;

struct AudioPortInfo {
    std::uint32_t id;
    char name[kNameSize];
    std::uint32_t flags;
    std::uint32_t channelCount;
    const char* portType;
    std::uint32_t inPlacePair;
};

struct PluginAudioPorts {
    std::uint32_t (*count)(const Plugin* plugin, bool isInput);
    bool (*get)(const Plugin* plugin, std::uint32_t index, bool isInput, AudioPortInfo* info);
};

// Note ports.

inline constexpr char kNotePortsId[] = "clap.note-ports";

enum NoteDialect : std::uint32_t { kDialectClap = 1U << 0, kDialectMidi = 1U << 1 };

struct NotePortInfo {
    std::uint32_t id;
    std::uint32_t supportedDialects;
    std::uint32_t preferredDialect;
    char name[kNameSize];
};

struct PluginNotePorts {
    std::uint32_t (*count)(const Plugin* plugin, bool isInput);
    bool (*get)(const Plugin* plugin, std::uint32_t index, bool isInput, NotePortInfo* info);
};

// Parameters.

inline constexpr char kParamsId[] = "clap.params";

enum ParamFlag : std::uint32_t {
    kParamIsStepped = 1U << 0,
    kParamIsBypass = 1U << 4,
    kParamIsAutomatable = 1U << 5
};

struct ParamInfo {
    std::uint32_t id;
    std::uint32_t flags; // ParamFlag
    void* cookie;
    char name[kNameSize];
    char module[kPathSize];
    double min;
    double max;
    double defaultValue;
};

struct PluginParams {
    std::uint32_t (*count)(const Plugin* plugin);
    bool (*getInfo)(const Plugin* plugin, std::uint32_t index, ParamInfo* info);
    bool (*getValue)(const Plugin* plugin, std::uint32_t id, double* value);
    bool (*valueToText)(const Plugin* plugin, std::uint32_t id, double value, char* text,
                        std::uint32_t size);
    bool (*textToValue)(const Plugin* plugin, std::uint32_t id, const char* text, double* value);
    // [audio] while the plug-in is active, main thread while it is not; never beside process.
    void (*flush)(const Plugin* plugin, const InputEvents* in, const OutputEvents* out);
};

enum ParamRescanFlag : std::uint32_t { kRescanValues = 1U << 0 };

struct HostParams {
    void (*rescan)(const Host* host, std::uint32_t flags);
    void (*clear)(const Host* host, std::uint32_t id, std::uint32_t flags);
    void (*requestFlush)(const Host* host); // [any but audio]
};

// State.

inline constexpr char kStateId[] = "clap.state";

struct InputStream {
    void* context;
    // Returns how many bytes were read: 0 at the end, -1 at an error.
    std::int64_t (*read)(const InputStream* stream, void* buffer, std::uint64_t size);
};

struct OutputStream {
    void* context;
    // Returns how many bytes were written, or -1 at an error.
    std::int64_t (*write)(const OutputStream* stream, const void* buffer, std::uint64_t size);
};

struct PluginState {
    bool (*save)(const Plugin* plugin, const OutputStream* stream);
    bool (*load)(const Plugin* plugin, const InputStream* stream);
};

struct HostState {
    void (*markDirty)(const Host* host);
};

// Latency and tail.

inline constexpr char kLatencyId[] = "clap.latency";
inline constexpr char kTailId[] = "clap.tail";

struct PluginLatency {
    std::uint32_t (*get)(const Plugin* plugin); // samples
};

struct PluginTail {
    std::uint32_t (*get)(const Plugin* plugin); // samples; main and audio thread
};

// Timers.

inline constexpr char kTimerSupportId[] = "clap.timer-support";

struct PluginTimerSupport {
    void (*onTimer)(const Plugin* plugin, std::uint32_t timer);
};

struct HostTimerSupport {
    bool (*registerTimer)(const Host* host, std::uint32_t periodMs, std::uint32_t* timer);
    bool (*unregisterTimer)(const Host* host, std::uint32_t timer);
};

// The editor.

inline constexpr char kGuiId[] = "clap.gui";
inline constexpr char kWindowX11[] = "x11";
inline constexpr char kWindowWin32[] = "win32";

struct Window {
    const char* api;
    union {
        unsigned long x11;
        void* pointer;
    };
};

struct GuiResizeHints {
    bool canResizeHorizontally;
    bool canResizeVertically;
    bool preserveAspectRatio;
    std::uint32_t aspectRatioWidth;
    std::uint32_t aspectRatioHeight;
};

struct PluginGui {
    bool (*isApiSupported)(const Plugin* plugin, const char* api, bool isFloating);
    bool (*getPreferredApi)(const Plugin* plugin, const char** api, bool* isFloating);
    bool (*create)(const Plugin* plugin, const char* api, bool isFloating);
    void (*destroy)(const Plugin* plugin);
    bool (*setScale)(const Plugin* plugin, double scale);
    bool (*getSize)(const Plugin* plugin, std::uint32_t* width, std::uint32_t* height);
    bool (*canResize)(const Plugin* plugin);
    bool (*getResizeHints)(const Plugin* plugin, GuiResizeHints* hints);
    bool (*adjustSize)(const Plugin* plugin, std::uint32_t* width, std::uint32_t* height);
    bool (*setSize)(const Plugin* plugin, std::uint32_t width, std::uint32_t height);
    bool (*setParent)(const Plugin* plugin, const Window* window);
    bool (*setTransient)(const Plugin* plugin, const Window* window);
    void (*suggestTitle)(const Plugin* plugin, const char* title);
    bool (*show)(const Plugin* plugin);
    bool (*hide)(const Plugin* plugin);
};

struct HostGui {
    void (*resizeHintsChanged)(const Host* host);
    bool (*requestResize)(const Host* host, std::uint32_t width, std::uint32_t height); // [any]
    bool (*requestShow)(const Host* host);                                              // [any]
    bool (*requestHide)(const Host* host);                                              // [any]
    void (*closed)(const Host* host, bool wasDestroyed);                                // [any]
};

// Which thread this is, for a plug-in that wants to know.

inline constexpr char kThreadCheckId[] = "clap.thread-check";

struct HostThreadCheck {
    bool (*isMainThread)(const Host* host);
    bool (*isAudioThread)(const Host* host);
};

} // namespace zelvatone::clap
