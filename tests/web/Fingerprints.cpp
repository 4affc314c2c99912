// Prints a number for each group of results in which a browser could differ: conversions, tables
// and factors made by the C library, texts, and whole performances. Compiled for this machine and
// for a browser's; a test compares what both print. To standard error, because the engine prints to
// the other.

#include "tests/kernel/Fingerprint.h"
#include "tests/kernel/Random.h"
#include "tests/kernel/Scenario.h"

#include "engine/ModePowers.h"
#include "engine/ParameterReading.h"
#include "engine/WaveTable.h"
#include "formats/ParameterUnits.h"
#include "params/CheckedAccess.h"
#include "params/Truncation.h"

#include <array>
#include <bit>
#include <cstdio>
#include <limits>
#include <string>

using namespace zelvatone;

namespace {

constexpr int kScenarios = 40;
constexpr std::int64_t kModeSamples = 150'000; // of each

void report(const std::string& name, const Fingerprint& fingerprint) {
    std::fprintf(stderr, "%s %016llx\n", name.c_str(),
                 static_cast<unsigned long long>(fingerprint.value()));
}

// Any float: most are far out of an integer's range.
float anyFloat(Random& random) {
    return std::bit_cast<float>(random.word());
}

void reportConversions() {
    Fingerprint all;
    const auto add = [&all](float value) {
        all.add(truncateToInt32(static_cast<double>(value)));
        all.add(roundToInt32(value));
    };
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const float value : {0.0F, 0.5F, 1.5F, 2147483520.0F, 2147483648.0F, 4294967296.0F, 1e10F,
                              1e38F, 1e-45F, kInfinity}) {
        add(value);
        add(-value);
    }
    add(std::numeric_limits<float>::quiet_NaN());
    Random random(1);
    for (int i = 0; i < 100'000; ++i) {
        add(anyFloat(random));
    }
    report("conversions", all);
}

void reportLookups() {
    Fingerprint all;
    Random random(2);
    VoiceSettings settings;
    for (const float chop : {0.0F, 0.0005F, 0.3F, 1.0F, -1.0F, 1e30F, anyFloat(random),
                             std::numeric_limits<float>::quiet_NaN()}) {
        settings.chop = chop;
        const wavetable::Readout readout(settings);
        all.add(readout.length);
        all.add(readout.scale);
        for (int i = 0; i < 10'000; ++i) {
            all.add(wavetable::lookup(readout, anyFloat(random)));
        }
    }
    report("look-ups", all);
}

void reportWaves() {
    VoiceSettings settings;
    for (std::int32_t wave = 0; wave < 5; ++wave) {
        Fingerprint all;
        for (std::int32_t crush = 0; crush <= 32; ++crush) {
            settings.waveKind = wave;
            settings.crushBits = crush;
            wavetable::build(settings, settings.tableSize);
            for (std::int32_t i = 0; i < settings.tableSize; ++i) {
                all.add(settings.table[static_cast<std::size_t>(i)]);
            }
        }
        report("wave " + std::to_string(wave), all);
    }
}

void reportPowers() {
    Fingerprint falloffs, ratios;
    for (std::int32_t i = -800; i <= 400; ++i) {
        for (std::int32_t k = 1; k <= kMaxModeCount; ++k) {
            falloffs.add(powerAsFloat(k, static_cast<float>(i) / 100.0F));
        }
        for (std::int32_t j = 0; j < static_cast<std::int32_t>(kPrimes.size()); ++j) {
            ratios.add(extraRatio(j, static_cast<float>(i) / 100.0F));
        }
    }
    report("falloffs", falloffs);
    report("detuned ratios", ratios);
}

// Every place of the wheel, and the angle that it makes of 1 Hz.
void reportBends() {
    Fingerprint all;
    ZelvatoneEngine engine(Renderer::kReference);
    for (std::int32_t place = -8192; place < 8192; ++place) {
        engine.pitchBend(static_cast<float>(place / 8192.0));
        for (const double rate : {44100.0, 48000.0, 96000.0}) {
            all.add(
                static_cast<float>(2.0 / rate * 3.141592653589793 * engine.settings->bendRatio));
        }
    }
    for (const float note : engine.noteFrequency) {
        all.add(note);
    }
    report("bends", all);
}

// Every parameter at many places of its knob: values, what the voices get, texts.
void reportParameters() {
    Fingerprint values, settings, texts;
    SynthProgram program = makeDefaultProgram();
    VoiceSettings voice;
    wavetable::build(voice, voice.tableSize);
    for (const ParameterUnits& units : parameterUnits()) {
        SynthParameter& parameter = *checkedAt(program.parameters, units.index);
        for (int i = 0; i <= 500; ++i) {
            const float knob = static_cast<float>(i) / 500.0F;
            parameter.setValue(parameter.toUnits(parameter.min, parameter.max, knob));
            values.add(parameter.value);
            values.add(parameter.toNormalised(parameter.min, parameter.max, parameter.value));
            texts.add(parameter.getDisplay());
            if (units.index == kShiftInterval || units.index == kFreqDrop) {
                readVoiceSettings(program.parameters, voice);
                settings.add(voice.shiftBeats);
                settings.add(voice.dropFactor);
            }
        }
        parameter.setValue(parameter.defaultValue);
    }
    report("values", values);
    report("settings", settings);
    report("texts", texts);
}

void reportScenarios() {
    for (int seed = 0; seed < kScenarios; ++seed) {
        Scenario scenario(static_cast<std::uint64_t>(seed));
        const std::string difference = scenario.play(kModeSamples);
        report("scenario " + std::to_string(seed) + (difference.empty() ? "" : " " + difference),
               scenario.fingerprint());
    }
}

} // namespace

int main() {
    reportConversions();
    reportLookups();
    reportWaves();
    reportPowers();
    reportBends();
    reportParameters();
    reportScenarios();
}
