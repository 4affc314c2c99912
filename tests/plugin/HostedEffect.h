// A plug-in from the host's side: everything goes through its AEffect record.
#pragma once

#include "tests/plugin/EventList.h"

#include <string>
#include <vector>

struct StereoBlock {
    std::vector<float> left;
    std::vector<float> right;

    // The largest absolute sample of the left channel.
    float peak() const;
};

// Bit by bit, so that equal means equal also for NaN and for the two zeros.
bool operator==(const StereoBlock& a, const StereoBlock& b);

class HostedEffect {
public:
    explicit HostedEffect(AEffect* record) : record(record) {}

    VstIntPtr ask(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                  float opt = 0.0F) const;
    void setParameter(VstInt32 index, float value) const;
    float getParameter(VstInt32 index) const;
    // The text that a request writes, into a buffer with ample room.
    std::string text(VstInt32 opcode, VstInt32 index = 0) const;
    VstIntPtr send(EventList events) const;
    VstIntPtr send(const std::vector<MidiMessage>& messages) const;
    // Renders into buffers that held `before` in every sample.
    StereoBlock render(VstInt32 frames, float before = 0.0F) const;

    AEffect* record;
};
