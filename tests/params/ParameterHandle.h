// Parameters owned by a test.
#pragma once

#include "params/SynthParameter.h"

#include <memory>

namespace zelvatone::test {

struct ParameterDestroy {
    void operator()(SynthParameter* parameter) const { SynthParameter::destroy(parameter); }
};

// Deletes any kind through the base, as a program does.
using ParameterHandle = std::unique_ptr<SynthParameter, ParameterDestroy>;

} // namespace zelvatone::test
