// What a long note of an instrument does, in numbers.
#pragma once

#include "host/midi/Song.h"
#include "tour/Fourier.h"

#include <span>
#include <vector>

namespace zelvatone {

// The note by which every program is measured: the A below middle C, 220 Hz, held for three
// seconds, and three seconds for its end.
constexpr double kHeldSeconds = 3.0;
Song measuredNote();

struct NoteMeasures {
    bool isSilent = true; // then all others are 0

    // Seconds; "for good" is within the held note, or within the three seconds after it.
    double riseSeconds = 0.0;  // from the key until 6 dB below the largest level
    double fallSeconds = 0.0;  // from the key until 20 dB below it for good; kHeldSeconds for never
    double ringSeconds = 0.0;  // from the release until 30 dB below it for good
    double sunkDecibels = 0.0; // how far below it the last half second of the held note stays

    // Shares of the held note's power, 0 to 1.
    double lowShare = 0.0;       // below 165 Hz, a fourth below the note
    double highShare = 0.0;      // above 2 kHz
    double strongestShare = 0.0; // of the strongest partial, a quarter-tone to either side
    double metallicShare = 0.0;  // of partials above it at no multiple of half its frequency

    double strongestHz = 0.0;    // where the strongest partial lies
    double thirdDecibels = 0.0;  // of the partial at three times that, relative to it
    double secondDecibels = 0.0; // of that at twice
    double tonalShare = 0.0;   // of a moment's power, that of its five strongest peaks; the median
    double sweepOctaves = 0.0; // how far the middle of the spectrum wanders
    double pulsesPerSecond = 0.0; // of changes that repeat; 0: none do
};

class NoteMeter {
public:
    // For sound of this rate in Hz. From one thread at a time.
    explicit NoteMeter(double sampleRate);

    // `samples`: one channel of measuredNote(), full scale 1, without DC. From any thread.
    NoteMeasures measure(std::span<const float> samples) const;

private:
    std::vector<std::vector<float>> moments(std::span<const float> samples) const;
    std::vector<double> heldSpectrum(std::span<const float> samples) const;

    double sampleRate_;
    Fourier fine_;  // tells partials apart
    Fourier brief_; // tells moments apart
};

} // namespace zelvatone
