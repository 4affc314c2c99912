#include "tests/hostile/Requests.h"

#include "tests/hostile/HostileCallback.h"
#include "tests/hostile/OddValues.h"
#include "tests/hostile/Promise.h"

#include <array>
#include <string>

namespace zelvatone::test {

namespace {

// Opcodes whose pointer leads to more than a text, or to none, and what is done to the instance's
// life and window: these have functions of their own.
bool hasOwnFunction(VstInt32 opcode) {
    switch (opcode) {
    case effClose:
    case effEditOpen:
    case effEditClose:
    case effEditIdle:
    case effSetSampleRate: // with the rendering thread only
    case effProcessEvents:
        return true;
    default:
        return false;
    }
}

// Where the result of a request goes, large enough for any of them and aligned for its records.
struct Room {
    alignas(16) std::array<char, 1024> bytes{};
    void* pointer() { return bytes.data(); }
};

} // namespace

void readTexts(const Instance& instance, Random& random) {
    const VstInt32 index = oddIndex(random, kParameterCount);
    instance.readText(random.oneOf({effGetParamName, effGetParamLabel, effGetParamDisplay}), index,
                      oddNumber(random), kVstMaxParamStrLen);
    instance.readText(effGetProgramName, index, oddNumber(random), kVstMaxProgNameLen);
    // A negative program ends the process.
    instance.readText(effGetProgramNameIndexed,
                      random.oneOf({random.below(kProgramCount), 42, 1 << 30}), oddNumber(random),
                      kVstMaxProgNameLen);
    instance.readText(effGetEffectName, index, 0, kVstMaxEffectNameLen);
    instance.readText(effGetVendorString, index, 0, kVstMaxVendorStrLen);
    instance.readText(effGetProductString, index, 0, kVstMaxProductStrLen);
}

void setParameters(const Instance& instance, Random& random) {
    for (VstInt32 i = random.between(1, 8); i > 0; --i) {
        const VstInt32 index = oddIndex(random, kParameterCount);
        instance.effect.setParameter(index, oddParameter(random));
        instance.effect.getParameter(index);
        countRequest();
    }
}

void setPrograms(const Instance& instance, Random& random) {
    instance.ask(effSetProgram, 0,
                 random.oneIn(4) ? oddNumber(random) : random.below(kProgramCount));
    const VstIntPtr program = instance.ask(effGetProgram);
    expectPromise(program >= 0 && program < kProgramCount,
                  "the current program is one of the bank");
    std::string name(static_cast<std::size_t>(random.below(300)), 'x');
    for (char& letter : name) {
        letter = static_cast<char>(random.between(1, 255));
    }
    instance.ask(effSetProgramName, 0, 0, name.data());
}

void sendAnyRequest(const Instance& instance, Random& random) {
    const VstInt32 opcode =
        random.oneIn(10) ? static_cast<VstInt32>(random.word()) : random.between(-3, 100);
    if (hasOwnFunction(opcode)) {
        return;
    }
    VstInt32 index = oddIndex(random, kParameterCount);
    if (opcode == effGetProgramNameIndexed && index < 0) {
        index = 0;
    }
    Room atPointer;
    Room atValue;
    const bool needsPointer = opcode == effGetChunk || opcode == effGetSpeakerArrangement;
    void* pointer = needsPointer || !random.oneIn(3) ? atPointer.pointer() : nullptr;
    VstIntPtr value = oddNumber(random);
    if (opcode == effGetSpeakerArrangement) { // the value is an address
        value = random.oneIn(2) ? 0 : reinterpret_cast<VstIntPtr>(atValue.pointer());
    }
    instance.ask(opcode, index, value, pointer, oddParameter(random));
}

void sendEvents(const Instance& instance, Random& random, VstInt32 frames) {
    EventList events;
    const VstInt32 count = random.oneIn(50) ? random.below(5000) : random.below(20);
    for (VstInt32 i = 0; i < count; ++i) {
        const MidiMessage message{random.below(256), random.below(256), random.below(256),
                                  oddOffset(random, frames)};
        if (random.oneIn(10)) {
            events.addNull();
        } else if (random.oneIn(5)) {
            events.addAs(random.oneOf({kVstSysExType + 0, 0, -1, 2, 1 << 30}), message);
        } else {
            events.add(message);
        }
    }
    if (random.oneIn(20)) {
        instance.ask(effProcessEvents);
    }
    instance.ask(effProcessEvents, oddIndex(random, 10), oddNumber(random),
                 events.record(random.oneIn(20) ? random.oneOf({0, -5}) : -1));
}

void render(Instance& instance, Random& random) {
    chooseTime(random.oneIn(3) ? random.below(timeCount()) : 0);
    VstInt32 frames = random.oneOf({0, 1, 2, 63, 64, 65, 127, 333, 512});
    if (random.oneIn(60)) {
        frames = random.between(1000, 9000);
    }
    if (random.oneIn(2)) {
        sendEvents(instance, random, frames);
    }
    instance.block.render(instance.effect, frames);
}

void setRateAndSize(const Instance& instance, Random& random) {
    if (random.oneIn(2)) {
        instance.ask(effMainsChanged, 0, random.below(2));
    }
    instance.ask(effSetSampleRate, 0, 0, nullptr, oddRate(random));
    instance.ask(effSetBlockSize, 0, oddNumber(random));
}

} // namespace zelvatone::test
