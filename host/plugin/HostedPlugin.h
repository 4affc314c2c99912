// One instance of a plug-in, from its entry point to its close.
#pragma once

#include "host/plugin/HostServices.h"
#include "host/plugin/PluginLibrary.h"
#include "vst2/aeffectx.h"

#include <memory>
#include <string>

namespace zelvatone {

// Instances share nothing but the library; each may be used from a thread of its own.
class HostedPlugin {
public:
    // Creates and opens an instance and sets the stream's format. Throws InputError when the
    // entry point returns no plug-in.
    HostedPlugin(const PluginLibrary& library, const StreamFormat& format);
    // Switches off and closes.
    ~HostedPlugin();
    HostedPlugin(const HostedPlugin&) = delete;
    HostedPlugin& operator=(const HostedPlugin&) = delete;

    const AEffect& record() const { return *effect_; }
    const StreamFormat& format() const { return format_; }
    const std::string& path() const { return path_; }
    // Counts from the record, never negative.
    int parameterCount() const;
    int programCount() const;
    int inputCount() const;
    int outputCount() const;
    bool isInstrument() const;

    // Any request of the interface.
    VstIntPtr request(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                      float opt = 0.0F);
    // The text that a request fills in.
    std::string text(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0);

    // Parameters by index, 0 to parameterCount() - 1, as normalised values.
    float parameter(int index);
    void setParameter(int index, float value);

    // See HostServices.
    void setEditListener(EditListener* listener) { services_.setEditListener(listener); }

    // Between these two, blocks are rendered.
    void switchOn();
    void switchOff();
    // Renders one block at the place in the music that `time` says: hands over the block's events
    // (may be null) and replaces `frames` samples, at most the block size, of every output.
    void render(const VstTimeInfo& time, VstEvents* events, float** inputs, float** outputs,
                int frames);

private:
    StreamFormat format_;
    std::string path_;
    HostServices services_;
    AEffect* effect_ = nullptr;
    bool isOn_ = false;
};

} // namespace zelvatone
