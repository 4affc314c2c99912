// Pictures of which frequencies sound when.
#pragma once

#include "host/picture/Picture.h"
#include "tour/Fourier.h"

#include <span>
#include <vector>

namespace zelvatone {

// Frequencies lie on a scale of equal octaves, low ones below.
constexpr double kLowestPicturedHz = 30.0;
constexpr double kHighestPicturedHz = 18000.0;
// Levels of the first and the last colour, in dB; 0 is a sine of full scale.
constexpr double kFaintestDecibels = -90.0;
constexpr double kLoudestDecibels = -6.0;

// Where a frequency lies, from 0 at the bottom of the picture to 1 at its top.
double heightOf(double hz);

class Spectrogram {
public:
    // For sound of this rate in Hz. From one thread at a time.
    explicit Spectrogram(double sampleRate);

    // Full scale is 1.0. From any thread.
    Picture draw(std::span<const float> samples, int width, int height) const;

private:
    std::vector<float> levels(std::span<const float> samples, double centre) const;

    double sampleRate_;
    Fourier fourier_;
};

} // namespace zelvatone
