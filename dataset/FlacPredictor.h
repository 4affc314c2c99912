// What FLAC's fixed predictors leave of a signal.
#pragma once

#include <cstdint>
#include <span>

namespace zelvatone {

// A predictor of order n takes the next sample from the polynomial through the last n: its residual
// is the n-th difference of the signal.
constexpr int kHighestFlacOrder = 4;

// The order, 0 to kHighestFlacOrder, whose residuals have the smallest sum of magnitudes.
// `numbers`: 24 bits, at least kHighestFlacOrder of them.
int bestFlacOrder(std::span<const std::int32_t> numbers);

// The residuals from sample `order` on, 0, -1, 1, -2, 2 ... as 0, 1, 2, 3, 4 ..., to `residuals`,
// as long as `numbers`, whose first `order` places become 0.
void flacResiduals(std::span<const std::int32_t> numbers, int order,
                   std::span<std::uint32_t> residuals);

} // namespace zelvatone
