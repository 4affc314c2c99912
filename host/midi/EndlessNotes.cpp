#include "host/midi/EndlessNotes.h"

#include "performance/Controllers.h"

#include <bitset>

namespace zelvatone {

namespace {

// Which notes sound, by channel.
class Sounding final : public ControllerOutput {
public:
    void play(const MidiMessage& message) override {
        auto& notes = notes_[message.channel()];
        const std::size_t note = message.data1 & 0x7FU;
        if (message.kind() == kNoteOnStatus) {
            notes.set(note, message.data2 > 0);
        } else if (message.kind() == kNoteOffStatus) {
            notes.reset(note);
        }
    }
    void setGain(float /*gain*/, std::int32_t /*frame*/) override {}
    void stopSound(std::int32_t /*frame*/) override { notes_ = {}; }
    void chooseProgram(std::int32_t /*program*/, std::int32_t /*frame*/) override {}

    int count() const {
        std::size_t count = 0;
        for (const auto& notes : notes_) {
            count += notes.count();
        }
        return static_cast<int>(count);
    }

private:
    std::array<std::bitset<128>, 16> notes_;
};

} // namespace

int endlessNotes(const Song& song, const std::function<bool(const SongEvent&)>& isPlayed) {
    std::array<Controllers, 16> controllers; // all sound off stops the sound of its channel
    std::array<Sounding, 16> sounding;
    for (const SongEvent& event : song.events) {
        if (event.bytes[0] < kSystemStatus && isPlayed(event)) {
            const std::size_t channel = event.bytes[0] & 0x0FU;
            controllers[channel].take({.frame = 0,
                                       .status = event.bytes[0],
                                       .data1 = event.bytes[1],
                                       .data2 = event.bytes[2]},
                                      sounding[channel]);
        }
    }
    int count = 0;
    for (const Sounding& channel : sounding) {
        count += channel.count();
    }
    return count;
}

int endlessNotes(const Song& song) {
    return endlessNotes(song, [](const SongEvent&) { return true; });
}

} // namespace zelvatone
