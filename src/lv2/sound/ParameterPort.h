// One parameter's control port.
#pragma once

#include <cmath>
#include <limits>
#include <optional>

namespace zelvatone::lv2 {

// A session keeps a port's value as a decimal. Common hosts write eight places, which is not enough
// for each float below 1/8; so the plug-in keeps the exact value beside it, and a port that says
// the same but for those places means that value.
class ParameterPort {
public:
    // Half of the eighth place, and the rounding to a float of this size.
    static constexpr float kTextRounding = 1e-8F;

    void connect(const float* value) { value_ = value; }
    // From a saved state.
    void expect(float exactValue) { exact_ = exactValue; }

    // The value to take over, units; none while the port says what it said before. Audio thread.
    std::optional<float> change() {
        if (value_ == nullptr || *value_ == last_) {
            return std::nullopt;
        }
        last_ = *value_;
        if (!(std::fabs(last_ - exact_) <= kTextRounding)) {
            exact_ = last_;
        }
        return exact_;
    }

private:
    static constexpr float kNone = std::numeric_limits<float>::quiet_NaN(); // equals nothing

    const float* value_ = nullptr; // the host's
    float last_ = kNone;
    float exact_ = kNone;
};

} // namespace zelvatone::lv2
