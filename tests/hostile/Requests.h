// What the hostile host does to an instance. Each function sends one or a few random requests.
#pragma once

#include "tests/hostile/Instance.h"
#include "tests/kernel/Random.h"

namespace zelvatone::test {

// Any thread.
void readTexts(const Instance& instance, Random& random);
void setParameters(const Instance& instance, Random& random);
void setPrograms(const Instance& instance, Random& random);

// Any opcode but those of life and window, with arguments that the interface allows.
void sendAnyRequest(const Instance& instance, Random& random);

// The thread that renders.
void sendEvents(const Instance& instance, Random& random, VstInt32 frames);
void render(Instance& instance, Random& random);

// The same thread, or while it does not render.
void setRateAndSize(const Instance& instance, Random& random);

} // namespace zelvatone::test
