// Which of the renderers an engine uses.
#pragma once

#include "engine/fast/ModeKernel.h"

#include <array>

namespace zelvatone {

enum class Renderer { kReference, kSse2, kAvx2, kAvx512 };

inline constexpr std::array kAllRenderers = {Renderer::kReference, Renderer::kSse2, Renderer::kAvx2,
                                             Renderer::kAvx512};

// The kernel that `renderer` works with; null for the reference renderer, which needs none.
const ModeKernel* kernelOf(Renderer renderer);

// "reference", "sse2", "avx2" or "avx512".
const char* nameOf(Renderer renderer);

// Whether this processor can run it.
bool isSupported(Renderer renderer);

// The one with the widest vectors that this processor has.
Renderer widestRenderer();

} // namespace zelvatone
