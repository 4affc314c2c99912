#define ZELVATONE_LANES 4
#include "engine/fast/kernel/Kernel.h"

namespace zelvatone {

constinit const ModeKernel kSse2Kernel = makeKernel("sse2");

} // namespace zelvatone
