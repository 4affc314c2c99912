// A polynomial wave shaper, set by "Reserved". It stands beside the output path, not in it.
#pragma once

#include <array>
#include <cstdint>

namespace zelvatone {

class PolyShaper {
public:
    static constexpr std::int32_t kOrder = 16;

    // The identity: c[1] alone is 1.
    PolyShaper() { c[1] = 1.0F; }

    // Takes the coefficients of "Reserved" = `set`; any value but 1 to 4 is the identity.
    void select(std::int32_t set);
    // The polynomial at `x`, by Horner's rule in single precision.
    float evaluate(float x) const;

    std::int32_t order = kOrder;
    std::array<float, kOrder + 1> c{}; // c[i] belongs to x to the power of i
};

} // namespace zelvatone
