#include "engine/PolyShaper.h"

#include <initializer_list>

namespace zelvatone {

void PolyShaper::select(std::int32_t set) {
    c.fill(0.0F);
    const auto put = [this](std::initializer_list<std::int32_t> powers, float coefficient) {
        for (const std::int32_t power : powers) {
            c[power] = coefficient;
        }
    };
    // Each set's coefficients sum to 1, so full level stays full level.
    switch (set) {
    case 1:
        put({1, 2, 8, 13}, 0.25F);
        break;
    case 2:
        put({1, 4, 5, 6, 10}, 0.2F);
        break;
    case 3:
        put({1, 3, 9, 10}, 0.25F);
        break;
    case 4:
        put({1, 2, 9, 12, 13}, 0.2F);
        break;
    default:
        put({1}, 1.0F);
        break;
    }
}

float PolyShaper::evaluate(float x) const {
    float result = c[order];
    for (std::int32_t power = order - 1; power >= 0; --power) {
        result = result * x + c[power];
    }
    return result;
}

} // namespace zelvatone
