// The loudness of a note over time.
#pragma once

#include "engine/VoiceSettings.h"

#include <cstdint>

namespace zelvatone {

// What the engine needs of any envelope. Audio thread.
class Envelope {
public:
    // Advances by `dt` seconds and returns the value there.
    virtual float tick(double dt) = 0;
    // Whether a note is sounding or fading.
    virtual bool isActive() const = 0;
    // Starts a note that peaks at `velocity`, 0 to 1.
    virtual void trigger(double velocity) = 0;
    // Starts the fade of a note.
    virtual void release() = 0;

protected:
    ~Envelope() = default;
};

// Attack, decay, sustain, release, each a straight line in time. The times are read from the
// shared settings at every tick, so a knob reaches notes that already sound.
class ADSR final : public Envelope {
public:
    enum State : std::int32_t { kIdle = 0, kHeld = 1, kReleased = 2 };

    // `settings` is not owned and must outlive the envelope.
    explicit ADSR(const EnvelopeSettings* settings) : settings(settings) {}

    float tick(double dt) override;
    bool isActive() const override { return state == kHeld || state == kReleased; }
    // Attacks from zero whatever the level was; the old level stays until the first tick.
    void trigger(double newVelocity) override;
    // Fades from the last computed level, the one of the slot's previous note if there was no tick
    // since the trigger.
    void release() override;

    double time = 0.0; // seconds since the last trigger or release
    std::int32_t state = kIdle;
    const EnvelopeSettings* settings;
    double velocity = 0.0; // peak, 0 to 1
    double level = 0.0;    // last computed, before velocity; the release starts from it

private:
    double heldLevel() const;
};

} // namespace zelvatone
