// How loud a listener finds a sound.
#pragma once

#include <memory>
#include <span>

namespace zelvatone {

// Integrated loudness as EBU R 128 and ITU-R BS.1770 define it: weighted by frequency, over the
// parts that are not silent.
class LoudnessMeter {
public:
    // `channels`: 1 or 2; `sampleRate`: Hz, 8000 to 192000. Throws InputError without memory.
    LoudnessMeter(int channels, int sampleRate);
    ~LoudnessMeter();
    LoudnessMeter(const LoudnessMeter&) = delete;
    LoudnessMeter& operator=(const LoudnessMeter&) = delete;

    // Takes samples, channels interleaved, full scale 1.0; all of them finite.
    void measure(std::span<const float> samples);
    // LUFS of all samples so far; -infinity for silence and for less than 0.4 seconds.
    double integrated() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace zelvatone
