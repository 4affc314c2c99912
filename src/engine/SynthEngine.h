// What every engine of the plug-in has: its identity, programs, voice slots and event queue,
// and the step from MIDI messages to timed events.
#pragma once

#include "engine/EventRing.h"
#include "engine/VoiceSlots.h"
#include "params/SynthProgram.h"

#include <cstdint>
#include <vector>

namespace zelvatone {

// What the host is told about the instrument.
struct SynthIdentity {
    std::int32_t numInputs;
    std::int32_t numOutputs;
    const char* effectName;
    const char* vendorName;
    const char* productName;
    std::int32_t vendorVersion;
};

// The engine has no threads and takes no locks. processMidi, setTempo and render are called on the
// audio thread, in that order for each block; the two other setters by the host's dispatcher.
class SynthEngine {
public:
    SynthEngine(const SynthEngine&) = delete;
    SynthEngine& operator=(const SynthEngine&) = delete;

    // Writes `sampleFrames` samples to outputs[0] and outputs[1]; `inputs` is never read. Audio
    // thread.
    virtual void render(float** inputs, float** outputs, std::int32_t sampleFrames) = 0;
    // `rate`: Hz. Not while a block renders.
    virtual void setSampleRate(float rate);
    // Makes program `index` current; no value is copied. Negative indices and those above the count
    // are ignored. An index equal to the count passes that test and ends the process.
    virtual void setProgram(std::int32_t index);
    // Starts `note` (0 to 127) with `velocity` (1 to 127). Audio thread, as are the next two.
    virtual void noteOn(std::int32_t note, std::int32_t velocity) = 0;
    virtual void noteOff(std::int32_t note) = 0;
    // `amount`: octaves.
    virtual void pitchBend(float amount) = 0;
    // There is no state but programs and parameters: hands out null and returns 0 bytes.
    virtual std::int32_t getChunk(void** data, bool isPreset);
    virtual std::int32_t setChunk(void* data, std::int32_t byteSize, bool isPreset);

    // Takes one MIDI message: `status` without its channel, so all channels play alike; two data
    // bytes 0 to 127; the sample of the coming block at which it is due. Messages without a meaning
    // here are dropped.
    void processMidi(std::int32_t status, std::int32_t data1, std::int32_t data2,
                     std::int32_t deltaFrames);
    // Each queues one event. With the ring full the event is destroyed and never acts.
    void queueNoteOn(std::int32_t note, std::int32_t velocity, std::int32_t deltaFrames);
    void queueNoteOff(std::int32_t note, std::int32_t deltaFrames);
    void queuePitchBend(float amount, std::int32_t deltaFrames);
    // Queues a note-off for every note from 0 up, all due at once.
    void queueAllNotesOff();
    // `beatsPerMinute` holds from the next block on.
    void setTempo(float beatsPerMinute) { tempo = beatsPerMinute; }

    std::int32_t numInputs;
    std::int32_t numOutputs;
    const char* effectName;
    const char* vendorName;
    const char* productName;
    std::int32_t vendorVersion;
    float sampleRate = 44100.0F; // Hz
    // Nothing reads these; a note-off message clears the middle one.
    std::int32_t stateWords[3] = {0, 0, 0};
    float tempo = 120.0F; // beats per minute
    ProgramBank programs;
    SynthProgram* currentProgram = nullptr; // into programs; set while other threads read it
    std::vector<std::int32_t> voiceNotes;   // by slot: kFreeSlot, kReleasedSlot or a note
    EventRing events;
    std::int32_t voiceCount;

protected:
    SynthEngine(std::int32_t voiceCount, const SynthIdentity& identity);
    // Discards the events that still wait.
    ~SynthEngine();

    // One pass over the waiting events, at the start of every sample.
    void runEventPass();
    // Runs the passes of the coming samples, 0 to `limit`, up to the one before the next that
    // applies an event; returns for how many samples.
    std::int32_t runQuietEventPasses(std::int32_t limit);
    // Whether the next pass applies nothing but calls of noteOn, noteOff and pitchBend.
    bool nextPassIsOfEngineEvents() const;
    // Destroys the events that still wait, without applying them.
    void discardEvents();

private:
    void queue(SynthEvent* event, std::int32_t deltaFrames);
};

} // namespace zelvatone
