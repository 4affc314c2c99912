#include "dataset/FlacPredictor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace zelvatone {

namespace {

constexpr std::size_t kLanes = 4; // what every x86-64 processor computes at once
using Ints __attribute__((vector_size(4 * kLanes))) = std::int32_t;

using Sums = std::array<std::int64_t, kHighestFlacOrder + 1>; // by order

Ints load(const std::int32_t* from) {
    Ints lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

Ints magnitude(Ints lanes) {
    const Ints sign = lanes >> 31;
    return (lanes ^ sign) - sign;
}

// The residual of `order` for the samples at `at` on: the difference of two of the order below.
template<int order>
Ints residual(const std::int32_t* at) {
    if constexpr (order == 0) {
        return load(at);
    } else {
        return residual<order - 1>(at) - residual<order - 1>(at - 1);
    }
}

// Adds what the samples at `at` on leave. Equal differences are computed once by the compiler.
template<int order = 0>
void addMagnitudes(const std::int32_t* at, std::array<Ints, kHighestFlacOrder + 1>& sums) {
    sums[order] += magnitude(residual<order>(at));
    if constexpr (order < kHighestFlacOrder) {
        addMagnitudes<order + 1>(at, sums);
    }
}

// A lane holds this many magnitudes below 2^27, which the fourth difference of 24 bits is.
constexpr std::size_t kAddedInALane = 16;

template<int order>
void writeResiduals(std::span<const std::int32_t> numbers, std::span<std::uint32_t> residuals) {
    std::size_t i = order;
    for (; i + kLanes <= numbers.size(); i += kLanes) {
        const Ints left = residual<order>(numbers.data() + i);
        const Ints folded = (left << 1) ^ (left >> 31);
        std::memcpy(residuals.data() + i, &folded, sizeof folded);
    }
    // The last ones one by one, each with those that its residual needs.
    std::array<std::int32_t, kHighestFlacOrder + kLanes> rest{};
    for (; i < numbers.size(); ++i) {
        std::copy_n(numbers.data() + i - order, order + 1, rest.data());
        const Ints left = residual<order>(rest.data() + order);
        residuals[i] = static_cast<std::uint32_t>((left[0] << 1) ^ (left[0] >> 31));
    }
    std::fill_n(residuals.begin(), order, 0U);
}

} // namespace

int bestFlacOrder(std::span<const std::int32_t> numbers) {
    Sums sums{};
    std::size_t i = kHighestFlacOrder;
    while (i + kLanes <= numbers.size()) {
        std::array<Ints, kHighestFlacOrder + 1> lanes{};
        for (std::size_t n = 0; n < kAddedInALane && i + kLanes <= numbers.size(); ++n) {
            addMagnitudes(numbers.data() + i, lanes);
            i += kLanes;
        }
        i += kLanes * kAddedInALane; // half of the samples tell enough
        for (std::size_t order = 0; order < sums.size(); ++order) {
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                sums[order] += lanes[order][lane];
            }
        }
    }
    return static_cast<int>(std::min_element(sums.begin(), sums.end()) - sums.begin());
}

void flacResiduals(std::span<const std::int32_t> numbers, int order,
                   std::span<std::uint32_t> residuals) {
    switch (order) {
    case 0:
        return writeResiduals<0>(numbers, residuals);
    case 1:
        return writeResiduals<1>(numbers, residuals);
    case 2:
        return writeResiduals<2>(numbers, residuals);
    case 3:
        return writeResiduals<3>(numbers, residuals);
    default:
        return writeResiduals<4>(numbers, residuals);
    }
}

} // namespace zelvatone
