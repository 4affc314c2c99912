// Plays MIDI on a plug-in that knows notes and bends, as the music means it.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/render/EventRecords.h"
#include "host/render/Transport.h"
#include "performance/BendRange.h"
#include "performance/Controllers.h"
#include "performance/OutputGain.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zelvatone {

// The program of the plug-in that each of MIDI's 128 programs stands for; below 0: none, the
// message is ignored.
using ProgramMap = std::array<std::int16_t, 128>;
ProgramMap noPrograms();
// A program change names the program of its number, of a plug-in that has `count`.
ProgramMap programsByNumber(int count);

struct PerformerPlan {
    // Hands every message to the plug-in as it is.
    bool isRaw = false;
    ProgramMap programs = noPrograms();
    // Messages that the plug-in is handed at a time, where they fit; more come in several lists.
    EventCounts most{.midi = 1024, .exclusive = 64};
    // Another instance of the plug-in with the same settings. All sound off goes on with it, while
    // what is left of the old sound ends unheard; the next all sound off goes back, and renders the
    // rest of that sound at once if it has not ended yet. Without it, sound gets its release.
    HostedPlugin* spare = nullptr;
};

// One plug-in, block by block, with everything in a block at its sample. Pedals, volumes, all sound
// off and the like do what Controllers says, and bends have the range that BendRange says, if the
// range of the plug-in is known: that of Zelvatone is. Files and live play use the same class, so
// that the same messages in the same blocks give the same samples.
//
// A block is rendered in parts: it is cut at the samples where the volume or the program changes or
// the sound is stopped. Each part is a block to the plug-in, with the time of its first sample.
//
// Made and destroyed on any thread. All else on the audio thread: no lock, no allocation, no system
// call but what the plug-in itself does.
class Performer final : private ControllerOutput {
public:
    // Switches the plug-in on. Throws InputError for a plug-in that is not an instrument. What is
    // named must outlive the performer.
    Performer(HostedPlugin& plugin, const Transport& transport, const PerformerPlan& plan);
    ~Performer();
    Performer(const Performer&) = delete;
    Performer& operator=(const Performer&) = delete;

    // Of the recording: the first two outputs, or the only one.
    int channels() const;
    // Sample of the next block's start.
    std::int64_t position() const { return position_; }

    // Between blocks; normalised.
    void setParameter(int index, float value);

    // A block: beginBlock, then its messages by rising offset, then endBlock. `frames`: 1 to the
    // plug-in's block size.
    void beginBlock(int frames);
    // `message`: 1 to 3 bytes, or a whole exclusive message, which stays where it is until
    // endBlock().
    void take(std::int32_t offset, std::span<const std::uint8_t> message);
    void endBlock();
    // Of the block, as many samples as it has; until the next block.
    const float* output(int channel) const;

private:
    // What an instance has been given.
    struct Instance {
        HostedPlugin* plugin;
        bool hasPlayed = false;                      // since it was last stopped
        std::array<std::bitset<128>, 16> notes = {}; // that sound, by channel
        bool isEnding = false;                       // stopped, and its old sound may go on
        std::int32_t silence = 0;                    // samples of it so far, while ending
    };

    void play(const MidiMessage& message) override;
    void setGain(float gain, std::int32_t frame) override;
    void stopSound(std::int32_t frame) override;
    void chooseProgram(std::int32_t program, std::int32_t frame) override;

    Instance& active() { return instances_[active_]; }
    void follow(const MidiMessage& message);
    void hand(std::int32_t offset, std::span<const std::uint8_t> message);
    void handOver();
    void endNotes();
    void listen(Instance& instance, std::int32_t count) const;
    void letEnd(Instance& instance);
    void renderTo(std::int32_t frame);

    const Transport& transport_;
    const bool isRaw_;
    const ProgramMap programs_;
    const double sampleRate_;
    std::vector<Instance> instances_;
    std::size_t active_ = 0;
    EventRecords records_; // of the part that is rendered next
    Controllers controllers_;
    std::optional<BendRange> bendRange_;
    std::optional<MidiMessage> lastBend_;
    std::vector<OutputGain> gains_; // by channel
    std::int64_t position_ = 0;     // sample that the block starts at
    std::int32_t frames_ = 0;       // of the block
    std::int32_t done_ = 0;         // of them rendered
    std::vector<float> samples_;
    std::vector<float*> inputs_;  // one more than there are, so that the list is never null
    std::vector<float*> outputs_; // of the whole block
    std::vector<float*> unheard_; // of the spare
    std::vector<float*> part_;    // outputs of the part that is rendered
};

} // namespace zelvatone
