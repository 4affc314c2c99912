#define ZELVATONE_LANES 16
#include "engine/fast/kernel/Kernel.h"

namespace zelvatone {

constinit const ModeKernel kAvx512Kernel = makeKernel("avx512");

} // namespace zelvatone
