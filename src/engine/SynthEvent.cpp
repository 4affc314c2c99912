#include "engine/SynthEvent.h"

#include "engine/SynthEngine.h"

#include <new>

namespace zelvatone {

void SynthEvent::destroy(SynthEvent* event) {
    event->SynthEvent::~SynthEvent();
    ::operator delete(event);
}

void EngineNoteOnEvent::apply() {
    engine->noteOn(note, velocity);
}

void EngineNoteOffEvent::apply() {
    engine->noteOff(note);
}

void EnginePitchBendEvent::apply() {
    engine->pitchBend(amount);
}

} // namespace zelvatone
