// What a block costs the engine, in loads that vary one thing at a time. Times are for one block
// of 64 samples at 48 kHz, which lasts 1333 microseconds in real time; `core` is the share of one
// core that the load takes.
#include "engine/ZelvatoneEngine.h"
#include "params/ParameterTable.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>

namespace {

using zelvatone::ZelvatoneEngine;

constexpr float kSampleRate = 48000.0F;
constexpr std::int32_t kBlock = 64;

class Bench {
public:
    explicit Bench(benchmark::State& state) : state(state) { engine.setSampleRate(kSampleRate); }

    void set(zelvatone::ParameterIndex index, float units) {
        engine.currentProgram->parameters[index]->setValue(units);
    }
    void setModeCount(float count) {
        set(zelvatone::kMaxModes, count);
        set(zelvatone::kModeInit, count);
        renderBlock(); // a note takes its mode count from the settings of the last block
    }
    void hold(std::int32_t lowest, std::int32_t count) {
        for (std::int32_t note = lowest; note < lowest + count; ++note) {
            engine.processMidi(0x90, note, 100, 0);
        }
        renderBlock();
    }
    void renderBlock() { engine.render(nullptr, outputs.data(), kBlock); }
    void measure() {
        for (auto _ : state) {
            renderBlock();
            benchmark::DoNotOptimize(left.data());
        }
        state.counters["core"] =
            benchmark::Counter(static_cast<double>(state.iterations()) * kBlock / kSampleRate,
                               benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    }

    ZelvatoneEngine engine;

private:
    benchmark::State& state;
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
    std::array<float*, 2> outputs{left.data(), right.data()};
};

void silence(benchmark::State& state) {
    Bench(state).measure();
}

void oneDefaultNote(benchmark::State& state) {
    Bench bench(state);
    bench.renderBlock();
    bench.hold(60, 1);
    bench.measure();
}

void heldNotes(benchmark::State& state) {
    Bench bench(state);
    bench.setModeCount(static_cast<float>(state.range(1)));
    bench.hold(36, static_cast<std::int32_t>(state.range(0)));
    bench.measure();
}

// Phases of high partials turn by more than a cycle a sample.
void highNotes(benchmark::State& state) {
    Bench bench(state);
    bench.setModeCount(100.0F);
    bench.hold(72, 32);
    bench.measure();
}

void heldNotesWithFrequencyDrop(benchmark::State& state) {
    Bench bench(state);
    bench.set(zelvatone::kFreqDrop, -4.0F);
    bench.setModeCount(100.0F);
    bench.hold(36, 32);
    bench.measure();
}

// Shifts every 1/32 beat, and glides that never come to rest between them.
void heldNotesShifting(benchmark::State& state) {
    Bench bench(state);
    bench.set(zelvatone::kShiftInterval, -5.0F);
    bench.set(zelvatone::kBlendTime, 1.0F);
    bench.set(zelvatone::kModeShift, 1.0F);
    bench.setModeCount(100.0F);
    bench.hold(36, 32);
    bench.measure();
}

// Events that lie far ahead cost a pass at every sample.
void pendingEvents(benchmark::State& state) {
    Bench bench(state);
    for (int i = 0; i < 250; ++i) {
        bench.engine.processMidi(0xE0, 0, 64, 2000000000);
    }
    bench.measure();
}

BENCHMARK(silence);
BENCHMARK(oneDefaultNote);
BENCHMARK(heldNotes)->ArgNames({"notes", "modes"})->Args({32, 10})->Args({32, 100});
BENCHMARK(highNotes);
BENCHMARK(heldNotesWithFrequencyDrop);
BENCHMARK(heldNotesShifting);
BENCHMARK(pendingEvents);

} // namespace
