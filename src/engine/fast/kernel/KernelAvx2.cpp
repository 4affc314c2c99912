#define ZELVATONE_LANES 8
#include "engine/fast/kernel/Kernel.h"

namespace zelvatone {

constinit const ModeKernel kAvx2Kernel = makeKernel("avx2");

} // namespace zelvatone
