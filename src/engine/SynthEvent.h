// Things that happen to the engine at a certain sample.
#pragma once

#include <cstdint>

namespace zelvatone {

class SynthEngine;

// Made when a MIDI message arrives, applied and destroyed when its sample comes. Audio thread.
class SynthEvent {
public:
    // Does to the engine what the event stands for.
    virtual void apply() = 0;

    // Deletes an event of any kind, made with new. The kinds hold plain values only, so there is
    // nothing for a virtual destructor to find.
    static void destroy(SynthEvent* event);

protected:
    explicit SynthEvent(SynthEngine* engine) : engine_(engine) {}
    ~SynthEvent() = default;

    SynthEngine* engine_; // not owned
};

// Whether `event` is of one of the kinds below, which do nothing but call the engine's noteOn,
// noteOff or pitchBend.
bool isEngineEvent(const SynthEvent& event);

class EngineNoteOnEvent final : public SynthEvent {
public:
    // `velocity`: 1 to 127, as MIDI has it.
    EngineNoteOnEvent(SynthEngine* engine, std::int32_t note, std::int32_t velocity)
        : SynthEvent(engine), note_(note), velocity_(velocity) {}
    void apply() override;

private:
    std::int32_t note_;
    std::int32_t velocity_;
};

class EngineNoteOffEvent final : public SynthEvent {
public:
    EngineNoteOffEvent(SynthEngine* engine, std::int32_t note) : SynthEvent(engine), note_(note) {}
    void apply() override;

private:
    std::int32_t note_;
};

class EnginePitchBendEvent final : public SynthEvent {
public:
    // `amount`: octaves, -1 to just under +1.
    EnginePitchBendEvent(SynthEngine* engine, float amount) : SynthEvent(engine), amount_(amount) {}
    void apply() override;

private:
    float amount_;
};

} // namespace zelvatone
