// A program: a named, complete set of parameter objects; and the bank, the engine's list of them.
#pragma once

#include "params/ProgramName.h"
#include "params/SynthParameter.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zelvatone {

// Owns its parameter objects: copies are deep, so no two programs ever share a value.
class SynthProgram {
public:
    // "Unnamed Program" with `count` default-constructed parameters.
    explicit SynthProgram(std::size_t count);
    SynthProgram(const SynthProgram& other);
    SynthProgram& operator=(const SynthProgram& other);
    ~SynthProgram();

    // Puts `parameter` (owned from then on) into slot `index` and deletes what was there. An
    // index outside the list ends the process.
    void replaceParameter(std::int32_t index, SynthParameter* parameter);

    std::vector<SynthParameter*> parameters; // by parameter index
    ProgramName name;
};

using ProgramBank = std::vector<SynthProgram>;

} // namespace zelvatone
