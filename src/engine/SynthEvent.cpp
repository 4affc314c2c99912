#include "engine/SynthEvent.h"

#include "engine/SynthEngine.h"

#include <new>

namespace zelvatone {

void SynthEvent::destroy(SynthEvent* event) {
    event->SynthEvent::~SynthEvent();
    ::operator delete(event);
}

void EngineNoteOnEvent::apply() {
    engine_->noteOn(note_, velocity_);
}

void EngineNoteOffEvent::apply() {
    engine_->noteOff(note_);
}

void EnginePitchBendEvent::apply() {
    engine_->pitchBend(amount_);
}

} // namespace zelvatone
