#include "engine/fast/KernelChoice.h"

#include <algorithm>

namespace zelvatone {

// Vectors in a browser have four lanes, as those of SSE2: that kernel is compiled for them.

const ModeKernel* kernelOf(Renderer renderer) {
    return renderer == Renderer::kSse2 ? &kSse2Kernel : nullptr;
}

const char* nameOf(Renderer renderer) {
    const ModeKernel* kernel = kernelOf(renderer);
    return kernel == nullptr ? "reference" : kernel->name;
}

bool isSupported(Renderer renderer) {
    return renderer == Renderer::kReference || renderer == Renderer::kSse2;
}

Renderer widestRenderer() {
    return Renderer::kSse2;
}

} // namespace zelvatone
