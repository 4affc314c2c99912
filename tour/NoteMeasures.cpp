#include "tour/NoteMeasures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace zelvatone {

namespace {

constexpr double kReleaseSeconds = 3.0;
constexpr double kStepSeconds = 0.01; // between two looks at the level or the spectrum
// Where the held note is looked at for its spectrum: after the click of the key, before the
// release.
constexpr double kFirstMoment = 0.06;
constexpr double kLastMoment = 2.94;
constexpr double kLowHz = 165.0;
constexpr double kHighHz = 2000.0;
constexpr double kLowestHz = 25.0; // below it there are no tones, only what the DC block leaves
constexpr double kSilentDecibels = -80.0;

using Spectrum = std::vector<double>; // power by bin

// A level every kStepSeconds, in dB; 0 is a constant of full scale.
std::vector<double> levelsOf(std::span<const float> samples, double sampleRate) {
    const auto step = static_cast<std::size_t>(std::lround(kStepSeconds * sampleRate));
    constexpr double kNothing = 1e-12; // -120 dB; has a logarithm
    std::vector<double> levels;
    for (std::size_t start = 0; start + step <= samples.size(); start += step) {
        double power = 0.0;
        for (const float sample : samples.subspan(start, step)) {
            power += static_cast<double>(sample) * static_cast<double>(sample);
        }
        levels.push_back(10.0 * std::log10(power / static_cast<double>(step) + kNothing));
    }
    return levels;
}

// Seconds until all that follows is below `limit`.
double secondsUntilBelow(std::span<const double> levels, double limit) {
    std::size_t end = levels.size();
    while (end > 0 && levels[end - 1] < limit) {
        --end;
    }
    return static_cast<double>(end) * kStepSeconds;
}

void measureLevels(std::span<const double> levels, double largest, NoteMeasures& measures) {
    const auto heldSteps =
        std::min(static_cast<std::size_t>(std::lround(kHeldSeconds / kStepSeconds)), levels.size());
    const auto held = levels.first(heldSteps);
    const auto risen = std::ranges::find_if(held, [&](double x) { return x >= largest - 6.0; });
    measures.riseSeconds = static_cast<double>(risen - held.begin()) * kStepSeconds;
    measures.fallSeconds = secondsUntilBelow(held, largest - 20.0);
    measures.ringSeconds = secondsUntilBelow(levels.subspan(heldSteps), largest - 30.0);
    const auto lastHalfSecond = held.last(std::min<std::size_t>(50, held.size()));
    measures.sunkDecibels = largest - std::ranges::max(lastHalfSecond);
}

// The power between two frequencies.
double powerIn(const Spectrum& spectrum, double binHz, double low, double high) {
    const auto last = static_cast<double>(spectrum.size() - 1);
    const auto begin = static_cast<std::size_t>(std::clamp(std::ceil(low / binHz), 0.0, last));
    const auto end = static_cast<std::size_t>(std::clamp(std::floor(high / binHz), 0.0, last));
    double power = 0.0;
    for (std::size_t bin = begin; bin <= end; ++bin) {
        power += spectrum[bin];
    }
    return power;
}

// The power within a quarter-tone of a frequency, and never of less than the window's own width.
double powerAt(const Spectrum& spectrum, double binHz, double hz) {
    const double reach = std::max(0.03 * hz, 2.0 * binHz);
    return powerIn(spectrum, binHz, hz - reach, hz + reach);
}

// Bins above all others near them, and above a ten-thousandth of the strongest.
std::vector<std::size_t> peaksOf(const Spectrum& spectrum, std::size_t strongest) {
    constexpr std::size_t kReach = 3; // bins: half the width that the window gives a sine
    std::vector<std::size_t> peaks;
    for (std::size_t bin = kReach; bin + kReach < spectrum.size(); ++bin) {
        const auto near = std::span(spectrum).subspan(bin - kReach, 2 * kReach + 1);
        if (spectrum[bin] > 1e-4 * spectrum[strongest] && spectrum[bin] >= std::ranges::max(near)) {
            peaks.push_back(bin);
        }
    }
    return peaks;
}

// Partials of strings and pipes lie at multiples of the strongest, or of half of it when an octave
// below sounds with it; those of bells and plates lie between.
double metallicPower(const Spectrum& spectrum, std::size_t strongest) {
    constexpr double kOff = 0.08; // of half the strongest's frequency: a third of a semitone at two
    double power = 0.0;
    for (const std::size_t peak : peaksOf(spectrum, strongest)) {
        const double halves = 2.0 * static_cast<double>(peak) / static_cast<double>(strongest);
        // High partials may be off by as much in proportion.
        const double allowed = std::max(kOff, 0.01 * halves);
        if (halves > 2.1 && std::abs(halves - std::round(halves)) > allowed) {
            for (std::size_t bin = peak - 2; bin <= peak + 2; ++bin) {
                power += spectrum[bin];
            }
        }
    }
    return power;
}

// The bin around which a peak's power lies, between two bins as a rule.
double middleOf(const Spectrum& spectrum, std::size_t peak) {
    double sum = 0.0;
    double power = 0.0;
    for (std::size_t bin = peak - 2; bin <= std::min(peak + 2, spectrum.size() - 1); ++bin) {
        sum += spectrum[bin] * static_cast<double>(bin);
        power += spectrum[bin];
    }
    return sum / power;
}

double decibelsBetween(double power, double reference) {
    constexpr double kNothing = 1e-12;
    return 10.0 * std::log10(std::max(power / reference, kNothing));
}

void measureSpectrum(const Spectrum& spectrum, double binHz, NoteMeasures& measures) {
    const auto lowest = static_cast<std::size_t>(std::ceil(kLowestHz / binHz));
    const auto strongest = static_cast<std::size_t>(
        std::max_element(spectrum.begin() + static_cast<std::ptrdiff_t>(lowest), spectrum.end()) -
        spectrum.begin());
    const double hz = middleOf(spectrum, strongest) * binHz;
    const double highest = static_cast<double>(spectrum.size()) * binHz;
    const double all = powerIn(spectrum, binHz, 0.0, highest);
    const double first = powerAt(spectrum, binHz, hz);
    measures.strongestHz = hz;
    measures.strongestShare = first / all;
    measures.lowShare = powerIn(spectrum, binHz, 0.0, kLowHz) / all;
    measures.highShare = powerIn(spectrum, binHz, kHighHz, highest) / all;
    measures.metallicShare = metallicPower(spectrum, strongest) / all;
    measures.secondDecibels = decibelsBetween(powerAt(spectrum, binHz, 2.0 * hz), first);
    measures.thirdDecibels = decibelsBetween(powerAt(spectrum, binHz, 3.0 * hz), first);
}

// The part of a moment's power that its five strongest peaks hold.
double tonalShareOf(std::vector<float> powers, double all) {
    constexpr int kPeaks = 5;
    constexpr std::ptrdiff_t kReach = 2; // bins to either side that the window spreads a sine over
    double held = 0.0;
    for (int i = 0; i < kPeaks; ++i) {
        const auto peak = std::ranges::max_element(powers);
        const auto begin = peak - std::min(kReach, peak - powers.begin());
        const auto end = peak + std::min(kReach + 1, powers.end() - peak);
        for (auto power = begin; power != end; ++power) {
            held += static_cast<double>(*power);
            *power = 0.0F;
        }
    }
    return held / all;
}

double sumOf(std::span<const float> powers) {
    double sum = 0.0;
    for (const float power : powers) {
        sum += static_cast<double>(power);
    }
    return sum;
}

// The octave around which the power lies; from one bin's frequency on.
double middleOctave(std::span<const float> powers, double all) {
    double sum = 0.0;
    for (std::size_t bin = 1; bin < powers.size(); ++bin) {
        sum += static_cast<double>(powers[bin]) * std::log2(static_cast<double>(bin));
    }
    return sum / all;
}

// How far two spectra of these powers differ, from 0 for the same colour at any level to 1.
double differenceOf(std::span<const float> one, double oneAll, std::span<const float> other,
                    double otherAll) {
    double common = 0.0;
    for (std::size_t bin = 0; bin < one.size(); ++bin) {
        common += std::sqrt(static_cast<double>(one[bin]) * static_cast<double>(other[bin]));
    }
    return 1.0 - common / std::sqrt(oneAll * otherAll);
}

double quantile(std::vector<double> values, double part) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

// How alike changes are to themselves so many steps later, at most 1.
double likeness(std::span<const double> changes, double mean, double variance, std::size_t lag) {
    double sum = 0.0;
    for (std::size_t i = 0; i + lag < changes.size(); ++i) {
        sum += (changes[i] - mean) * (changes[i + lag] - mean);
    }
    return sum / (variance * static_cast<double>(changes.size() - lag));
}

// The rate of changes that repeat at least every second; 0 when none do or when they are too small
// to be heard as beats.
double pulseRate(std::span<const double> changes) {
    constexpr double kLeastChange = 0.015; // a tenth of that is a slow beat of two partials
    constexpr double kLeastLikeness = 0.5;
    constexpr std::size_t kShortest = 7; // steps: faster pulses are a tone's roughness
    constexpr std::size_t kLongest = 105;
    double mean = 0.0;
    double squares = 0.0;
    for (const double change : changes) {
        mean += change / static_cast<double>(changes.size());
        squares += change * change / static_cast<double>(changes.size());
    }
    const double variance = squares - mean * mean;
    if (changes.size() <= 2 * kLongest || mean < kLeastChange || variance <= 0.0) {
        return 0.0;
    }
    double best = kLeastLikeness;
    std::size_t found = 0;
    for (std::size_t lag = kShortest; lag <= kLongest; ++lag) {
        const double here = likeness(changes, mean, variance, lag);
        const bool isPeak = here > likeness(changes, mean, variance, lag - 1) &&
                            here >= likeness(changes, mean, variance, lag + 1);
        // A multiple of the period is as alike; it must be clearly better to count.
        if (isPeak && here > best + (found == 0 ? 0.0 : 0.05)) {
            best = here;
            found = lag;
        }
    }
    return found == 0 ? 0.0 : 1.0 / (static_cast<double>(found) * kStepSeconds);
}

void measureMotion(const std::vector<std::vector<float>>& moments, NoteMeasures& measures) {
    std::vector<double> powers;
    std::ranges::transform(moments, std::back_inserter(powers),
                           [](const auto& moment) { return sumOf(moment); });
    const double least = 1e-2 * std::ranges::max(powers); // quieter moments count for nothing
    std::vector<double> tonal;
    std::vector<double> middles;
    std::vector<double> changes;
    for (std::size_t i = 0; i < moments.size(); ++i) {
        if (powers[i] < least) {
            continue;
        }
        tonal.push_back(tonalShareOf(moments[i], powers[i]));
        middles.push_back(middleOctave(moments[i], powers[i]));
        if (i > 0 && powers[i - 1] >= least) {
            changes.push_back(differenceOf(moments[i], powers[i], moments[i - 1], powers[i - 1]));
        }
    }
    measures.tonalShare = quantile(tonal, 0.5);
    measures.sweepOctaves = quantile(middles, 0.9) - quantile(middles, 0.1);
    measures.pulsesPerSecond = pulseRate(changes);
}

} // namespace

Song measuredNote() {
    constexpr std::uint8_t kKey = 57;
    constexpr std::uint8_t kVelocity = 100; // as in the tour's phrase
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), kHeldSeconds + kReleaseSeconds, {}, {}};
    song.add(0.0, std::array<std::uint8_t, 3>{0x90, kKey, kVelocity});
    song.add(kHeldSeconds, std::array<std::uint8_t, 3>{0x80, kKey, 0});
    return song;
}

NoteMeter::NoteMeter(double sampleRate) : sampleRate_(sampleRate), fine_(16384), brief_(2048) {}

// The power by bin over the whole held note.
std::vector<double> NoteMeter::heldSpectrum(std::span<const float> samples) const {
    const int step = fine_.window() / 4;
    Spectrum spectrum(fine_.bins(), 0.0);
    for (int centre = fine_.window() / 2; centre < kLastMoment * sampleRate_; centre += step) {
        const std::vector<float> powers = fine_.powers(samples, centre);
        for (std::size_t bin = 0; bin < powers.size(); ++bin) {
            spectrum[bin] += static_cast<double>(powers[bin]);
        }
    }
    return spectrum;
}

std::vector<std::vector<float>> NoteMeter::moments(std::span<const float> samples) const {
    std::vector<std::vector<float>> moments;
    const int count = static_cast<int>((kLastMoment - kFirstMoment) / kStepSeconds);
    for (int i = 0; i < count; ++i) {
        const double seconds = kFirstMoment + i * kStepSeconds;
        moments.push_back(brief_.powers(samples, seconds * sampleRate_));
    }
    return moments;
}

NoteMeasures NoteMeter::measure(std::span<const float> samples) const {
    NoteMeasures measures;
    const std::vector<double> levels = levelsOf(samples, sampleRate_);
    const double largest = levels.empty() ? kSilentDecibels : std::ranges::max(levels);
    if (largest <= kSilentDecibels) {
        return measures;
    }
    measures.isSilent = false;
    measureLevels(levels, largest, measures);
    const auto held = samples.first(
        std::min(samples.size(), static_cast<std::size_t>(kHeldSeconds * sampleRate_)));
    measureSpectrum(heldSpectrum(held), sampleRate_ / fine_.window(), measures);
    measureMotion(moments(held), measures);
    return measures;
}

} // namespace zelvatone
