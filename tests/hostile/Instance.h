// One instance of the plug-in in the hands of the hostile host.
#pragma once

#include "tests/hostile/GuardedBlock.h"
#include "tests/plugin/HostedEffect.h"

namespace zelvatone::test {

constexpr VstInt32 kParameterCount = 23;
constexpr VstInt32 kProgramCount = 42;

// The library stays loaded until the process ends.
class Instance {
public:
    Instance();
    ~Instance(); // closes it
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    // Sends a request and counts it.
    VstIntPtr ask(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                  float opt = 0.0F) const;
    // Any text request: it ends, and stays within `room` characters and its terminator.
    void readText(VstInt32 opcode, VstInt32 index, VstIntPtr value, std::size_t room) const;

    // Takes back what a storm has done, in the host's own terms: rate, tempo, all parameters of all
    // programs, bend, notes that sound or wait. Not while another thread uses the instance.
    void restore();
    // Plays a note of program `program` and compares it with an instance that was just made and
    // restored.
    void expectToPlayLikeNew(VstInt32 program);

    HostedEffect effect;
    GuardedBlock block;

private:
    void setAllParameters() const;
    void endAllNotes();
    void renderFor(VstInt32 frames);
};

} // namespace zelvatone::test
