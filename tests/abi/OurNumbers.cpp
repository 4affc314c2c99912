#include "tests/abi/AbiNumbers.h"

#include "vst2/aeffectx.h"

#include <cstddef>

// Where this side names a thing its own way.
#define AEFFECT_IO_RATIO ioRatio
#define AEFFECT_END offsetof(AEffect, future)
#define EVENT_HEAD_END offsetof(VstEvent, data)
#define PIN_PROPERTIES_END offsetof(VstPinProperties, future)

std::vector<AbiNumber> ourNumbers() {
    return {
#include "tests/abi/SharedNumbers.inc"
    };
}
