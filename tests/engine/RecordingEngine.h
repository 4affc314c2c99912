// An engine without sound, which writes down what happens to it and when.
#pragma once

#include "engine/SynthEngine.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace zelvatone::test {

struct Happening {
    std::int32_t sample; // counted from the first rendered one
    std::string what;

    bool operator==(const Happening&) const = default;
};

inline void PrintTo(const Happening& happening, std::ostream* out) {
    *out << happening.what << " at " << happening.sample;
}

class RecordingEngine final : public SynthEngine {
public:
    RecordingEngine()
        : SynthEngine(4, {.numInputs = 3,
                          .numOutputs = 5,
                          .effectName = "Recorder",
                          .vendorName = "Tests",
                          .productName = "Notebook",
                          .vendorVersion = 7}) {}

    void render(float** /*inputs*/, float** /*outputs*/, std::int32_t sampleFrames) override {
        for (std::int32_t n = 0; n < sampleFrames; ++n) {
            runEventPass();
            ++sample_;
        }
    }
    void noteOn(std::int32_t note, std::int32_t velocity) override {
        write("on " + std::to_string(note) + "/" + std::to_string(velocity));
    }
    void noteOff(std::int32_t note) override { write("off " + std::to_string(note)); }
    void pitchBend(float amount) override {
        bends.push_back(amount);
        write("bend");
    }

    void renderSamples(std::int32_t frames) { render(nullptr, nullptr, frames); }

    // The entries that wait, oldest first, as their counters; the ring keeps them.
    std::vector<std::int32_t> waitingCounters() {
        std::vector<std::int32_t> counters;
        for (std::int32_t i = events.available(); i > 0; --i) {
            EventRing::Entry entry{};
            events.read(entry);
            counters.push_back(entry.framesLeft);
            events.write(entry);
        }
        return counters;
    }

    std::vector<Happening> log;
    std::vector<float> bends;

private:
    void write(const std::string& what) { log.push_back({sample_, what}); }

    std::int32_t sample_ = 0;
};

} // namespace zelvatone::test
