#include "host/audio/LoudnessMeter.h"

#include "host/Error.h"

#include <ebur128.h>

#include <cmath>
#include <limits>

namespace zelvatone {

struct LoudnessMeter::State {
    ebur128_state* library;
    int channels;
};

LoudnessMeter::LoudnessMeter(int channels, int sampleRate)
    : state_(std::make_unique<State>(State{
          .library = ebur128_init(channels, sampleRate, EBUR128_MODE_I), .channels = channels})) {
    if (state_->library == nullptr) {
        throw InputError("cannot measure loudness: no memory");
    }
}

LoudnessMeter::~LoudnessMeter() {
    ebur128_destroy(&state_->library);
}

void LoudnessMeter::measure(std::span<const float> samples) {
    if (ebur128_add_frames_float(state_->library, samples.data(),
                                 samples.size() / static_cast<std::size_t>(state_->channels)) !=
        EBUR128_SUCCESS) {
        throw InputError("cannot measure loudness: no memory");
    }
}

double LoudnessMeter::integrated() const {
    double loudness = -std::numeric_limits<double>::infinity();
    ebur128_loudness_global(state_->library, &loudness);
    return std::isnan(loudness) ? -std::numeric_limits<double>::infinity() : loudness;
}

} // namespace zelvatone
