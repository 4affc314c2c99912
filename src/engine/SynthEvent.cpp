#include "engine/SynthEvent.h"

#include "engine/SynthEngine.h"

#include <new>
#include <typeinfo>

namespace zelvatone {

void SynthEvent::destroy(SynthEvent* event) {
    event->SynthEvent::~SynthEvent();
    ::operator delete(event);
}

bool isEngineEvent(const SynthEvent& event) {
    const std::type_info& kind = typeid(event);
    return kind == typeid(EngineNoteOnEvent) || kind == typeid(EngineNoteOffEvent) ||
           kind == typeid(EnginePitchBendEvent);
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
