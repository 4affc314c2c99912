#include "engine/ADSR.h"

#include <cstdio>

namespace zelvatone {

double ADSR::heldLevel() const {
    const double attack = settings->attack;
    const double decay = settings->decay;
    const double sustain = settings->sustain;
    if (time < attack) {
        return time / attack;
    }
    if (time < attack + decay) {
        return 1.0 - (1.0 - sustain) * ((time - attack) / decay);
    }
    return sustain;
}

float ADSR::tick(double dt) {
    time += dt;
    switch (state) {
    case kIdle:
        return 0.0F;
    case kHeld:
        level = heldLevel();
        return static_cast<float>(velocity * level);
    case kReleased:
        if (time < settings->release) {
            // The level itself stays, so the fade is a straight line from it to zero.
            return static_cast<float>((level - (time / settings->release) * level) * velocity);
        }
        state = kIdle;
        return 0.0F;
    default:
        std::printf("Huh?\n");
        return 0.0F;
    }
}

void ADSR::trigger(double newVelocity) {
    state = kHeld;
    time = 0.0;
    velocity = newVelocity;
}

void ADSR::release() {
    state = kReleased;
    time = 0.0;
}

} // namespace zelvatone
