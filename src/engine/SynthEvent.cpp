#include "engine/SynthEvent.h"

#include "engine/SynthEngine.h"

#include <new>

namespace zelvatone {

void SynthEvent::destroy(SynthEvent* event) {
    event->SynthEvent::~SynthEvent();
    ::operator delete(event);
}

void EngineNoteOnEvent::apply() {
    engine->noteOn(note_, velocity_);
}

void EngineNoteOffEvent::apply() {
    engine->noteOff(note_);
}

void EnginePitchBendEvent::apply() {
    engine->pitchBend(amount_);
}

} // namespace zelvatone
