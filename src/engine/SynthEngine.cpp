#include "engine/SynthEngine.h"

#include "engine/SynthEvent.h"
#include "params/CheckedAccess.h"
#include "params/SharedValue.h"

#include <algorithm>

namespace zelvatone {

namespace {

enum MidiStatus : std::int32_t {
    kMidiNoteOff = 0x80,
    kMidiNoteOn = 0x90,
    kMidiController = 0xB0,
    kMidiPitchBend = 0xE0
};

enum MidiController : std::int32_t { kMidiAllNotesOff = 123, kMidiMonoModeOn = 126 };

// 14 bits centred on 8192, as octaves -1 to just under +1.
float bendAmount(std::int32_t lowBits, std::int32_t highBits) {
    const std::int32_t position = ((highBits << 7) | lowBits) - 8192;
    return static_cast<float>(position * 0.0001220703125); // 1 / 8192
}

} // namespace

SynthEngine::SynthEngine(std::int32_t voiceCount, const SynthIdentity& identity)
    : numInputs(identity.numInputs),
      numOutputs(identity.numOutputs),
      effectName(identity.effectName),
      vendorName(identity.vendorName),
      productName(identity.productName),
      vendorVersion(identity.vendorVersion),
      voiceNotes(static_cast<std::size_t>(voiceCount), kFreeSlot),
      voiceCount(voiceCount) {}

SynthEngine::~SynthEngine() {
    discardEvents();
}

void SynthEngine::discardEvents() {
    EventRing::Entry entry{};
    while (events.read(entry) != 0) {
        SynthEvent::destroy(entry.event);
    }
}

void SynthEngine::setSampleRate(float rate) {
    sampleRate = rate;
}

void SynthEngine::setProgram(std::int32_t index) {
    // Compares with "greater than": the count itself goes on to the checked access.
    if (index < 0 || index > static_cast<std::int32_t>(programs.size())) {
        return;
    }
    storeShared(currentProgram, &checkedAt(programs, index));
}

std::int32_t SynthEngine::getChunk(void** data, bool /*isPreset*/) {
    *data = nullptr;
    return 0;
}

std::int32_t SynthEngine::setChunk(void* /*data*/, std::int32_t /*byteSize*/, bool /*isPreset*/) {
    return 0;
}

void SynthEngine::processMidi(std::int32_t status, std::int32_t data1, std::int32_t data2,
                              std::int32_t deltaFrames) {
    switch (status) {
    case kMidiNoteOn:
        if (data2 != 0) {
            queueNoteOn(data1, data2, deltaFrames);
            break;
        }
        [[fallthrough]]; // velocity 0 is a note-off
    case kMidiNoteOff:
        stateWords[1] = 0;
        queueNoteOff(data1, deltaFrames);
        break;
    case kMidiController:
        if (data1 == kMidiAllNotesOff || data1 == kMidiMonoModeOn) {
            queueAllNotesOff();
        }
        break;
    case kMidiPitchBend:
        queuePitchBend(bendAmount(data1, data2), deltaFrames);
        break;
    default:
        break;
    }
}

void SynthEngine::queue(SynthEvent* event, std::int32_t deltaFrames) {
    if (events.write({deltaFrames, event}) == 0) {
        SynthEvent::destroy(event); // the ring is full: the event is lost, its memory is not
    }
}

void SynthEngine::queueNoteOn(std::int32_t note, std::int32_t velocity, std::int32_t deltaFrames) {
    queue(new EngineNoteOnEvent(this, note, velocity), deltaFrames);
}

void SynthEngine::queueNoteOff(std::int32_t note, std::int32_t deltaFrames) {
    queue(new EngineNoteOffEvent(this, note), deltaFrames);
}

void SynthEngine::queuePitchBend(float amount, std::int32_t deltaFrames) {
    queue(new EnginePitchBendEvent(this, amount), deltaFrames);
}

void SynthEngine::queueAllNotesOff() {
    for (std::int32_t note = 0; note < 128; ++note) {
        queueNoteOff(note, 0);
    }
}

// Counts every entry down by one and applies those that are due. The count of entries that remain
// is the limit and it shrinks as entries are applied, so a pass with several due entries ends
// early: those it did not reach keep their counters and come first in the next pass. An event thus
// acts one sample before its offset, and a crowd of them is spread over a few samples.
void SynthEngine::runEventPass() {
    if (events.available() == 0) {
        return;
    }
    std::int32_t taken = 0;
    do {
        EventRing::Entry entry{};
        events.read(entry);
        // Unsigned, so that the lowest offset a host can send wraps around.
        entry.framesLeft =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(entry.framesLeft) - 1U);
        if (entry.framesLeft > 0) {
            events.write(entry);
        } else {
            entry.event->apply();
            SynthEvent::destroy(entry.event);
        }
        ++taken;
    } while (taken < events.available());
}

// Up to `limit` passes at once: with no entry due, a pass counts every entry down, turns the full
// ring once and does no more.
std::int32_t SynthEngine::runQuietEventPasses(std::int32_t limit) {
    const std::int32_t quiet = std::min(std::max(events.shortestWait(), 1) - 1, limit);
    events.countDown(quiet);
    return quiet;
}

bool SynthEngine::nextPassIsOfEngineEvents() const {
    for (std::int32_t i = 0; i < events.available(); ++i) {
        const EventRing::Entry& entry = events.peek(i);
        if (entry.framesLeft <= 1 && !isEngineEvent(*entry.event)) {
            return false;
        }
    }
    return true;
}

} // namespace zelvatone
