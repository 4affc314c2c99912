#include "host/audio/TruePeak.h"

#include "host/Error.h"

#include <ebur128.h>

#include <algorithm>
#include <memory>

namespace zelvatone {

namespace {

struct Close {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

} // namespace

double truePeakOf(std::span<const float> samples, int channels, int sampleRate) {
    const std::unique_ptr<ebur128_state, Close> meter(
        ebur128_init(channels, sampleRate, EBUR128_MODE_TRUE_PEAK));
    if (!meter || ebur128_add_frames_float(meter.get(), samples.data(),
                                           samples.size() / static_cast<std::size_t>(channels)) !=
                      EBUR128_SUCCESS) {
        throw InputError("cannot measure peaks: no memory");
    }
    double peak = 0.0;
    for (int channel = 0; channel < channels; ++channel) {
        double ofChannel = 0.0;
        ebur128_true_peak(meter.get(), channel, &ofChannel);
        peak = std::max(peak, ofChannel);
    }
    return peak;
}

} // namespace zelvatone
