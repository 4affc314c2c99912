#include "tests/hostile/Instance.h"

#include "tests/hostile/HostileCallback.h"
#include "tests/hostile/Promise.h"
#include "tests/plugin/GuardedText.h"

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

namespace zelvatone::test {

namespace {

constexpr float kRate = 44100.0F;
constexpr VstInt32 kBlock = 512;
constexpr int kSlots = 32;

constexpr VstInt32 kShiftInterval = 1;
constexpr VstInt32 kMinModes = 2;
constexpr VstInt32 kMaxModes = 3;
constexpr VstInt32 kModeInit = 17;

using Entry = AEffect* (*)(audioMasterCallback);

Entry entry() {
    static void* const library = dlopen(ZELVATONE_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror()); // NOLINT(concurrency-mt-unsafe): no threads yet
        std::abort();
    }
    return reinterpret_cast<Entry>(dlsym(library, "VSTPluginMain"));
}

} // namespace

Instance::Instance() : effect(entry()(hostileCallback)) {
    expectPromise(effect.record != nullptr, "an instance can be made at any time");
}

Instance::~Instance() {
    expectPromise(ask(effClose) == 1, "an instance can be closed at any time");
}

VstIntPtr Instance::ask(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                        float opt) const {
    countRequest();
    return effect.ask(opcode, index, value, ptr, opt);
}

void Instance::readText(VstInt32 opcode, VstInt32 index, VstIntPtr value, std::size_t room) const {
    GuardedText text;
    ask(opcode, index, value, text.data());
    const std::size_t touched = text.touched();
    expectPromise(touched <= room + 1, "a text stays within its size");
    expectPromise(touched == 0 || text.text().size() < touched, "a text is terminated");
}

void Instance::restore() {
    chooseTime(0);
    endAllNotes();
    endAllNotes(); // those that were still waiting for their sample
    effect.send({{0xE0, 0, 64}});
    ask(effSetProgram, 0, 0);
    // All modes, and a shift after a 64th of a second: it sets anew what a slot keeps from note to
    // note. In every slot.
    for (VstInt32 index = 0; index < kParameterCount; ++index) {
        effect.setParameter(index, 0.5F);
    }
    effect.setParameter(kShiftInterval, 0.0F);
    for (const VstInt32 modes : {kMinModes, kMaxModes, kModeInit}) {
        effect.setParameter(modes, 1.0F);
    }
    EventList notes;
    for (int note = 40; note < 40 + kSlots; ++note) {
        notes.add({0x90, note, 100});
    }
    effect.send(notes);
    renderFor(2 * kBlock);
    endAllNotes();
    setAllParameters();
    renderFor(kBlock);
}

void Instance::setAllParameters() const {
    for (VstInt32 program = 0; program < kProgramCount; ++program) {
        ask(effSetProgram, 0, program);
        for (VstInt32 index = 0; index < kParameterCount; ++index) {
            effect.setParameter(index, static_cast<float>((program + 5 * index) % 11) / 10.0F);
        }
    }
    ask(effSetProgram, 0, 0);
}

// Seconds pass within few samples, and with them every release.
void Instance::endAllNotes() {
    ask(effSetSampleRate, 0, 0, nullptr, 0.5F);
    effect.send({{0xB0, 123, 0}});
    renderFor(8 * kBlock); // more than the latest event waits
    ask(effSetSampleRate, 0, 0, nullptr, kRate);
}

void Instance::renderFor(VstInt32 frames) {
    for (VstInt32 done = 0; done < frames; done += kBlock) {
        block.render(effect, kBlock);
    }
}

void Instance::expectToPlayLikeNew(VstInt32 program) {
    Instance fresh;
    fresh.restore();
    for (const Instance* instance : {this, &fresh}) {
        instance->ask(effSetProgram, 0, program);
        instance->effect.send({{0x90, 60, 100}, {0xE0, 0, 80, 100}, {0x80, 60, 0, 700}});
    }
    for (int i = 0; i < 4; ++i) {
        block.render(effect, kBlock);
        fresh.block.render(fresh.effect, kBlock);
        expectPromise(block.hasBitsOf(fresh.block), "a note sounds as in a new instance");
        expectPromise(block.isFinite(), "ordinary values make finite samples");
    }
}

} // namespace zelvatone::test
