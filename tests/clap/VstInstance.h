// An instance of the VST 2.4 file, to compare with.
#pragma once

#include "vst2/aeffectx.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone::test {

class VstInstance {
public:
    // The library at `path` stays loaded until the process ends.
    explicit VstInstance(const std::string& path, float sampleRate);
    ~VstInstance();
    VstInstance(const VstInstance&) = delete;
    VstInstance& operator=(const VstInstance&) = delete;

    void setProgram(std::int32_t program);
    void setParameter(std::int32_t index, float normalised);
    void send(std::uint8_t status, std::uint8_t data1, std::uint8_t data2, std::int32_t frame);
    // The left channel.
    std::vector<float> play(std::int32_t frames);

    double tempo = 120.0;

private:
    static VstIntPtr host(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                          void* ptr, float opt);
    VstIntPtr dispatch(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0F);

    AEffect* effect_;
    VstTimeInfo time_{};
};

} // namespace zelvatone::test
