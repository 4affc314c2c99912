#include "engine/fast/KernelChoice.h"

#include <algorithm>

namespace zelvatone {

const ModeKernel* kernelOf(Renderer renderer) {
    switch (renderer) {
    case Renderer::kSse2:
        return &kSse2Kernel;
    case Renderer::kAvx2:
        return &kAvx2Kernel;
    case Renderer::kAvx512:
        return &kAvx512Kernel;
    default:
        return nullptr;
    }
}

const char* nameOf(Renderer renderer) {
    const ModeKernel* kernel = kernelOf(renderer);
    return kernel == nullptr ? "reference" : kernel->name;
}

bool isSupported(Renderer renderer) {
    __builtin_cpu_init(); // an engine may be made before the compiler's own start-up code has run
    switch (renderer) {
    case Renderer::kAvx2:
        return __builtin_cpu_supports("avx2") != 0;
    case Renderer::kAvx512:
        return __builtin_cpu_supports("avx512f") != 0;
    default:
        return true;
    }
}

Renderer widestRenderer() {
    return *std::find_if(kAllRenderers.rbegin(), kAllRenderers.rend(), isSupported);
}

} // namespace zelvatone
