// The host's side of the interface, as random as the rest.
#pragma once

#include "vst2/aeffectx.h"

namespace zelvatone::test {

// Any thread.
VstIntPtr hostileCallback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                          void* ptr, float opt);

// Number of times that the host can tell; time 0 has 120 beats a minute and is the first one told.
VstInt32 timeCount();
// Any thread.
void chooseTime(VstInt32 index);

} // namespace zelvatone::test
