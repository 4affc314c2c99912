// Wrapping by a kernel against wrapping in double precision.
#pragma once

#include "engine/fast/ModeKernel.h"

#include <cstdint>
#include <string>

// fmod(phase, the nearest float to 2 pi), in whole numbers. `phase`: finite, 4 or more either way.
float remainderInIntegers(float phase);

// Lets `kernel` wrap every `stride`-th float from `from` to `to` (neither negative) and its
// negative. Returns the first that comes out other than in double precision, and how; empty if all
// are right.
std::string firstWrongWrap(const zelvatone::ModeKernel& kernel, float from, float to,
                           std::uint32_t stride);
