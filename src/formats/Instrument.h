// The instrument as formats drive it that speak in units: blocks with everything in them at its
// sample.
#pragma once

#include "engine/ZelvatoneEngine.h"
#include "formats/InstrumentState.h"
#include "formats/ParameterUnits.h"
#include "params/SynthProgram.h"
#include "performance/Controllers.h"
#include "performance/OutputGain.h"

#include <atomic>
#include <cstdint>

namespace zelvatone {

// The 42 programs as they come, in the order of the bank. Made at the first call, which allocates:
// not on the audio thread. Constant from then on; any thread.
const ProgramBank& factoryBank();

// One engine with one set of values, which a program fills.
//
// A block is rendered in parts: it is cut at the samples where values, tempo, volume or program
// change or the sound is stopped, and each part has the bits that the VST 2.4 file gives for a
// block of that length with the same messages, values and tempo. Without such changes the block is
// one part. So settings reach the sound at their sample, and the schedule of shifts gets the tempo
// of the part in which a shift lies.
//
// Threads: the audio thread calls what is named so, without locks or allocation but what the engine
// itself allocates for events and blocks. Values may be read and set by any thread at any time.
class Instrument final : private ControllerOutput {
public:
    // What a program change in the MIDI does. Formats whose plug-ins may not change their own
    // parameters ignore it.
    enum class ProgramChange { kIgnored, kFollowed };

    explicit Instrument(ProgramChange programChange);
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;
    ~Instrument() = default;

    // `rate`: Hz. While no block is rendered.
    void setSampleRate(double rate);
    // Ends all sound; pedals, volume, expression and bend are as in a new instrument. Values,
    // bypass, tempo and program stay. Audio thread, or any while no block is rendered.
    void reset();

    // Units. Any thread.
    float value(ParameterIndex index) const;
    // Takes on nearestValue of `units`; ignores NaN. Any thread; the sound follows at the next
    // part.
    void setValue(ParameterIndex index, double units);
    bool isBypassed() const;
    void setBypassed(bool isBypassed);
    // Copies the values of factory program `program`; ignores one that does not exist. Any thread.
    void loadProgram(std::int32_t program);
    InstrumentState state() const;
    void setState(const InstrumentState& state);

    // A block: beginBlock, then what happens in it, by rising sample, then endBlock. Audio thread,
    // as is all below. A sample before one that has been given counts as that one; one outside the
    // block as its nearest end.

    // `left` and `right`: where `frames` samples go; unused for 0 frames. May be the same.
    void beginBlock(float* left, float* right, std::int32_t frames);
    // `message`: from midiMessage, if a host sent its bytes.
    void midiAt(const MidiMessage& message);
    void valueAt(std::int32_t frame, ParameterIndex index, double units);
    // Values that are not above 0 are ignored. The tempo holds until the next call, 120 at first.
    void tempoAt(std::int32_t frame, double beatsPerMinute);
    void bypassAt(std::int32_t frame, bool isBypassed);
    void endBlock();

    // Whether blocks in which nothing happens are silent from here on.
    bool isSilent() const;
    // How many notes sound, those among them that fade.
    std::int32_t soundingNotes() const;
    // How many samples the sound may last after the last key was let go. Not while the sample rate
    // is set.
    std::uint32_t tail() const;
    // How many messages have loaded a program. A reader that finds another number than before finds
    // new values. Any thread.
    std::uint32_t programChanges() const { return programChanges_.load(); }

private:
    void play(const MidiMessage& message) override;
    void setGain(float gain, std::int32_t frame) override;
    void stopSound(std::int32_t frame) override;
    void chooseProgram(std::int32_t program, std::int32_t frame) override;

    SynthParameter& parameter(ParameterIndex index) const;
    void renderTo(std::int32_t frame);
    void followGain();

    ZelvatoneEngine engine_;
    Controllers controllers_;
    OutputGain gain_;
    const bool followsProgramChange_;
    bool isBypassed_ = false; // shared
    std::atomic<std::uint32_t> programChanges_ = 0;
    // The block.
    float* left_ = nullptr;
    float* right_ = nullptr;
    std::int32_t frames_ = 0;
    std::int32_t done_ = 0; // samples rendered: where the present part begins
};

} // namespace zelvatone
