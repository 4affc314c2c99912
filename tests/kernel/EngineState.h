// Comparing two engines bit by bit.
#pragma once

#include "engine/ZelvatoneEngine.h"

#include <string>

// Where the first bit differs between the states of two engines, "slot 31, phase[17] is 0x..."
// for example; empty where none does.
std::string differenceInState(const zelvatone::ZelvatoneEngine& expected,
                              const zelvatone::ZelvatoneEngine& actual);

// The same for two blocks of samples.
std::string differenceInSamples(const float* expected, const float* actual, std::int32_t count);
