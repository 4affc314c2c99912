// An engine that makes no sound and writes down what the plug-in object wants from it.
#pragma once

#include "engine/SynthEngine.h"
#include "engine/SynthEvent.h"
#include "params/ParameterTable.h"

#include <string>
#include <vector>

class SpyEngine final : public zelvatone::SynthEngine {
public:
    struct Render {
        float** inputs;
        float** outputs;
        std::int32_t frames;
        float tempo; // that held when the block was rendered
    };

    // With a bank of three programs, named "First", "Second" and "Third".
    explicit SpyEngine(const zelvatone::SynthIdentity& identity = kIdentity)
        : SynthEngine(1, identity) {
        for (const char* name : {"First", "Second", "Third"}) {
            programs.push_back(zelvatone::makeDefaultProgram());
            programs.back().name = name;
        }
    }

    void render(float** inputs, float** outputs, std::int32_t frames) override {
        renders.push_back({inputs, outputs, frames, tempo});
    }
    void setSampleRate(float rate) override {
        SynthEngine::setSampleRate(rate);
        ratesGiven.push_back(rate);
    }
    void setProgram(std::int32_t index) override {
        SynthEngine::setProgram(index);
        programsGiven.push_back(index);
    }
    void noteOn(std::int32_t note, std::int32_t velocity) override {
        applied = "on " + std::to_string(note) + " " + std::to_string(velocity);
    }
    void noteOff(std::int32_t note) override { applied = "off " + std::to_string(note); }
    void pitchBend(float amount) override {
        applied = "bend";
        bend = amount;
    }

    // Takes all waiting events, in order: "on 60 100 at 5".
    std::vector<std::string> takeEvents() {
        std::vector<std::string> taken;
        zelvatone::EventRing::Entry entry{};
        while (events.read(entry) == 1) {
            entry.event->apply();
            zelvatone::SynthEvent::destroy(entry.event);
            taken.push_back(applied + " at " + std::to_string(entry.framesLeft));
        }
        return taken;
    }

    std::vector<Render> renders;
    std::vector<float> ratesGiven;
    std::vector<std::int32_t> programsGiven;
    float bend = 0.0F; // octaves, of the last bend event taken

private:
    static constexpr zelvatone::SynthIdentity kIdentity{.numInputs = 0,
                                                        .numOutputs = 2,
                                                        .effectName = "Effect",
                                                        .vendorName = "Vendor",
                                                        .productName = "Product",
                                                        .vendorVersion = 7};

    std::string applied;
};
