// An engine that only holds values.
#pragma once

#include "engine/SynthEngine.h"
#include "params/ParameterTable.h"

namespace zelvatone {

// One program with all parameters, and silence. User-interface thread.
class ShadowEngine final : public SynthEngine {
public:
    ShadowEngine();

    void render(float** /*inputs*/, float** /*outputs*/, std::int32_t /*sampleFrames*/) override {}
    void noteOn(std::int32_t /*note*/, std::int32_t /*velocity*/) override {}
    void noteOff(std::int32_t /*note*/) override {}
    void pitchBend(float /*amount*/) override {}

    SynthParameter& parameter(ParameterIndex index) const;
};

} // namespace zelvatone
