#include "engine/fast/EnvelopeRun.h"

#include "engine/fast/SampleClock.h"

#include <algorithm>

namespace zelvatone {

namespace {

using Clock = SampleClock<double>;

// Writes value(k) for tick k of the run, 0 on. A long one is filled to its end, because a loop of
// constant length becomes vector code.
template<class Value>
void fillLevels(std::int32_t samples, float* levels, Value value) {
    if (samples > kRunSamples / 2) {
        for (std::int32_t k = 0; k < kRunSamples; ++k) {
            levels[k] = value(k);
        }
    } else {
        for (std::int32_t k = 0; k < samples; ++k) {
            levels[k] = value(k);
        }
    }
}

// The same with value(time).
template<class Value>
void fillLevels(const Clock& clock, std::int32_t samples, float* levels, Value value) {
    std::array<double, kRunSamples> times{};
    clock.read(samples, times.data());
    fillLevels(samples, levels,
               [&](std::int32_t k) { return static_cast<float>(value(times[k])); });
}

// A held note moves on three straight lines. Each of these takes a run that lies on one of them as
// a whole, in the envelope's own expressions, and leaves the clock alone.

bool runAttack(ADSR& envelope, const Clock& clock, std::int32_t samples, float* levels) {
    const double attack = envelope.settings->attack;
    const double last = clock.at(samples);
    if (!(last < attack)) {
        return false;
    }
    const double velocity = envelope.velocity;
    fillLevels(clock, samples, levels, [=](double time) { return velocity * (time / attack); });
    envelope.level = last / attack;
    return true;
}

bool runDecay(ADSR& envelope, const Clock& clock, std::int32_t samples, float* levels) {
    const auto [attack, decay, sustain, release] = *envelope.settings;
    const double last = clock.at(samples);
    if (clock.at(1) < attack || !(last < attack + decay)) {
        return false;
    }
    const auto level = [=, attack = attack, decay = decay, sustain = sustain](double time) {
        return 1.0 - (1.0 - sustain) * ((time - attack) / decay);
    };
    const double velocity = envelope.velocity;
    fillLevels(clock, samples, levels, [=](double time) { return velocity * level(time); });
    envelope.level = level(last);
    return true;
}

bool runSustain(ADSR& envelope, const Clock& clock, std::int32_t samples, float* levels) {
    const auto [attack, decay, sustain, release] = *envelope.settings;
    const double first = clock.at(1);
    if (first < attack || first < attack + decay) {
        return false;
    }
    const auto level = static_cast<float>(envelope.velocity * sustain);
    fillLevels(samples, levels, [=](std::int32_t /*tick*/) { return level; });
    envelope.level = sustain;
    return true;
}

bool runRelease(const ADSR& envelope, const Clock& clock, std::int32_t samples, float* levels) {
    const double release = envelope.settings->release;
    if (!(clock.at(samples) < release)) {
        return false;
    }
    const double level = envelope.level;
    const double velocity = envelope.velocity;
    fillLevels(clock, samples, levels,
               [=](double time) { return (level - (time / release) * level) * velocity; });
    return true;
}

bool runOneLine(ADSR& envelope, const Clock& clock, std::int32_t samples, float* levels) {
    if (envelope.state == ADSR::kReleased) {
        return runRelease(envelope, clock, samples, levels);
    }
    return runSustain(envelope, clock, samples, levels) ||
           runAttack(envelope, clock, samples, levels) ||
           runDecay(envelope, clock, samples, levels);
}

} // namespace

std::int32_t ticksBeforeEnd(const ADSR& envelope, double dt, std::int32_t samples) {
    if (envelope.state != ADSR::kReleased) {
        return samples;
    }
    const Clock clock(envelope.time, dt, samples);
    const double release = envelope.settings->release;
    std::int32_t ticks = samples;
    while (ticks > 0 && !(clock.at(ticks) < release)) {
        --ticks;
    }
    return ticks;
}

std::int32_t runEnvelope(ADSR& envelope, double dt, std::int32_t samples, float* levels) {
    const Clock clock(envelope.time, dt, samples);
    if (runOneLine(envelope, clock, samples, levels)) {
        envelope.time = clock.at(samples);
        return samples;
    }
    std::int32_t ticks = 0;
    while (ticks < samples && envelope.isActive()) {
        levels[ticks++] = envelope.tick(dt);
    }
    return ticks;
}

} // namespace zelvatone
