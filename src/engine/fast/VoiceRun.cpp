#include "engine/fast/VoiceRun.h"

#include "engine/fast/SampleClock.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

// Where the next shift is due, by the rule of ModeVoice::shiftIsDue. A time in the same period
// differs from the clock's present one by a short number of last places, so what fmod would make
// of it is an exact sum.
std::int32_t samplesBeforeShift(const ModeVoice& voice, std::int32_t samples) {
    const double increment = voice.settings->secondsPerSample;
    const auto period = static_cast<double>(voice.shiftPeriod());
    const auto start = static_cast<double>(voice.time);
    const double sinceShift = std::fmod(start, period);
    // Far from it no clock is needed. Each sample is rounded by less than this.
    const double rounding = 0x1p-23 * (start + 1.0);
    if (sinceShift + (samples + 1) * (increment + rounding) <= period) {
        return samples;
    }
    const SampleClock<float> clock(voice.time, increment, samples);
    const auto isBefore = [&](std::int32_t k) {
        const double time = sinceShift + (static_cast<double>(clock.at(k)) - start);
        return time + increment <= period;
    };
    if (isBefore(samples - 1)) {
        return samples;
    }
    std::int32_t k = 0; // the first that is not before: time only grows
    for (std::int32_t end = samples - 1; k < end;) {
        const std::int32_t middle = (k + end) / 2;
        if (isBefore(middle)) {
            k = middle + 1;
        } else {
            end = middle;
        }
    }
    // The clock's rounding may have carried it over the end of the period without a shift: then the
    // next one is looked for when this sample is done.
    return voice.shiftIsDue(clock.at(k)) ? k : k + 1;
}

// The last mode leaves in the sample in which it arrives at a target amplitude of 0, and others may
// leave with it. No mode leaves before that.
std::int32_t samplesBeforeTrim(const ModeVoice& voice, std::int32_t samples) {
    const std::int32_t last = voice.activeCount - 1;
    if (last < 0 || voice.targetAmp[last] != 0.0F) {
        return samples;
    }
    float amp = std::fabs(voice.amp[last]);
    const float descent = voice.amp[last] > 0.0F ? -voice.ampStep[last] : voice.ampStep[last];
    if (amp == 0.0F) {
        return 0;
    }
    for (std::int32_t k = 0; k < samples; ++k) {
        amp -= descent;
        if (!(amp > 0.0F)) {
            return k;
        }
    }
    return samples;
}

// A sample at which modes may change: ModeVoice::tick with vectors for its loops.
void tickVoice(const VoiceTask& task, std::int32_t sample, const RunTools& tools) {
    ModeVoice& voice = task.voice;
    task.out[sample] =
        voice.gain * tools.kernel.sum(segmentOf(task, sample), tools.constants, tools.scratch);
    tools.kernel.glide(bankOf(voice));
    voice.trim();
    if (voice.shiftIsDue(voice.time)) {
        const std::int32_t count = voice.nextModeCount();
        tools.targets.fill(voice, count);
        voice.glideToTargets(count);
    }
    tools.kernel.advance(segmentOf(task, sample), tools.constants);
    advanceClock(voice, 1);
}

} // namespace

ModeBank bankOf(ModeVoice& voice) {
    return {.amp = voice.amp.data(),
            .freq = voice.freq.data(),
            .phase = voice.phase.data(),
            .ampStep = voice.ampStep.data(),
            .freqStep = voice.freqStep.data(),
            .targetAmp = voice.targetAmp.data(),
            .targetFreq = voice.targetFreq.data(),
            .reportedModes = voice.reportedModes.words.data(),
            .count = voice.activeCount};
}

Segment segmentOf(const VoiceTask& task, std::int32_t sample) {
    return {.modes = bankOf(task.voice),
            .gain = task.voice.gain,
            .out = task.out + sample,
            .slot = task.slot,
            .sample = sample};
}

std::int32_t samplesBeforeChange(const ModeVoice& voice, std::int32_t samples) {
    return samplesBeforeTrim(voice, samplesBeforeShift(voice, samples));
}

void advanceClock(ModeVoice& voice, std::int32_t samples) {
    const SampleClock<float> clock(voice.time, voice.settings->secondsPerSample, samples);
    voice.time = clock.at(samples);
}

VoiceStretch renderChanges(const VoiceTask& task, std::int32_t first, std::int32_t end,
                           const RunTools& tools) {
    for (; first < end; ++first) {
        const std::int32_t samples = samplesBeforeChange(task.voice, end - first);
        if (samples > 0) {
            return {first, samples};
        }
        tickVoice(task, first, tools);
    }
    return {end, 0};
}

} // namespace zelvatone
