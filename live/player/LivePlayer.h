// Plays an instrument live: what comes from keyboards, the terminal, the editor and a song goes
// into one stream of blocks, and from there to the loudspeakers and into a recording.
#pragma once

#include "host/midi/Song.h"
#include "host/plugin/HostedPlugin.h"
#include "host/render/EventSchedule.h"
#include "host/render/Performer.h"
#include "host/render/Transport.h"
#include "live/AudioBackend.h"
#include "live/SpscRing.h"
#include "live/player/ControllerMap.h"
#include "live/take/TakeClock.h"
#include "live/take/TakeRings.h"

#include <array>
#include <atomic>
#include <bitset>
#include <cstdint>
#include <optional>
#include <vector>

namespace zelvatone {

// From the user's thread to the player: due at the start of the next block.
struct LiveCommand {
    enum class Kind { kMessage, kMove, kMap };

    Kind kind;
    MidiMessage message{};       // of kMessage
    std::int16_t parameter = -1; // of kMove, and of kMap, where it is below 0 to forget it
    float value = 0.0F;          // of kMove, normalised
    std::uint8_t controller = 0; // of kMap
};

// From the player to the user's thread.
struct LiveNotice {
    enum class Kind { kController, kMove, kProgram };

    Kind kind;
    std::int16_t number; // of a controller, a parameter or a program
    float value;         // of a controller or a parameter, normalised
};

struct LiveReading {
    float peak = 0.0F; // since it was read last, 1.0 is full scale
    int notes = 0;     // that are held by keys or the pedal
    float load = 0.0F; // of the time that a block may take, the most since it was read last
    std::int64_t droppedMessages = 0;
};

// The plug-in always gets blocks of its own size: the sound depends on nothing but what is played.
// A sound system that asks for blocks of another size gets the sound up to a block later.
//
// All channels play the one instrument, as channel 1. Every message is moved to the next sample
// that a MIDI file can name, see TakeClock, so that the file of a recording plays the same.
class LivePlayer final : public AudioClient {
public:
    struct Plan {
        HostedPlugin* plugin = nullptr; // none is owned; all must outlive the player
        HostedPlugin* spare = nullptr;  // see PerformerPlan
        const Song* song = nullptr; // to play along with; its tempo holds. Channel 10 is left out
        TakeRings* take = nullptr;  // null: no recording
        ProgramMap programs = noPrograms();
        ControllerMap controllers = noControllers();
    };

    // Switches the plug-in on, which is told that it plays in real time. Throws InputError when it
    // is no instrument.
    explicit LivePlayer(const Plan& plan);

    void process(float* left, float* right, std::int32_t frames,
                 std::span<const MidiMessage> messages) noexcept override;

    // The user's thread, one. False when the player has not taken what came before.
    bool send(const LiveCommand& command) { return commands_.write(command); }
    bool takeNotice(LiveNotice& notice) { return notices_.read(notice); }
    LiveReading read();
    // Whether the song, if there is one, is over.
    bool songIsOver() const { return songIsOver_; }
    int channels() const { return performer_.channels(); }

private:
    static constexpr std::size_t kMostPending = 8192;

    struct Pending {
        std::int64_t frame;
        MidiMessage message;
    };

    void receive(std::int64_t frame, const MidiMessage& message);
    void renderBlock();
    void takeCommands();
    void takeSong();
    void makeMove(std::int16_t parameter, float value);
    void moveByControllers(std::int64_t end);
    void playMessages(std::int64_t end);
    void follow(const MidiMessage& message);
    void finishBlock();
    void measure(std::int64_t nanoseconds, std::int32_t frames);
    void tell(const LiveNotice& notice) { notices_.write(notice); }

    int blockSize_;
    double rate_;
    Transport transport_;
    Performer performer_;
    TakeClock clock_;
    std::optional<EventSchedule> song_;
    TakeRings* take_;
    ProgramMap programs_;
    ControllerMap controllers_;
    std::vector<Pending> pending_; // by frame
    std::size_t pendingCount_ = 0;
    std::vector<float> block_; // interleaved
    std::int32_t ready_ = 0;   // samples of the block that are still to be heard
    std::int64_t heard_ = 0;   // samples since the start
    std::bitset<128> notes_;
    std::bitset<128> sustained_;
    bool pedalIsDown_ = false;
    SpscRing<LiveCommand> commands_;
    SpscRing<LiveNotice> notices_;
    std::atomic<float> peak_{0.0F};
    std::atomic<float> load_{0.0F};
    std::atomic<int> noteCount_{0};
    std::atomic<std::int64_t> dropped_{0};
    std::atomic<bool> songIsOver_{false};
};

} // namespace zelvatone
