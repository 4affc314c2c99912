// Which notes a CLAP host has started, for note-offs that name no key.
#pragma once

#include "clap/abi/Events.h"
#include "performance/MidiMessage.h"

#include <array>
#include <cstdint>

namespace zelvatone {

// Turns CLAP's note events into MIDI messages. Audio thread.
class NoteTracker {
public:
    // The note-on; without a key of MIDI's there is none.
    template<class Play>
    void noteOn(const clap::NoteEvent& event, const Play& play) {
        if (event.key < 0 || event.key >= kKeys) {
            return;
        }
        const std::int16_t channel = channelOf(event);
        notes_[channel][event.key] = {.isDown = true, .id = event.noteId};
        play(message(event, kNoteOnStatus, channel, event.key, midiVelocity(event.velocity)));
    }

    // The note-off of the key, or, if the event leaves its key or its channel open, of every key
    // down that it stands for.
    template<class Play>
    void noteOff(const clap::NoteEvent& event, const Play& play) {
        if (event.key >= kKeys) {
            return;
        }
        if (event.key >= 0 && event.channel >= 0) {
            const std::int16_t channel = channelOf(event);
            notes_[channel][event.key].isDown = false;
            play(message(event, kNoteOffStatus, channel, event.key, 0));
            return;
        }
        for (std::int16_t channel = 0; channel < kChannels; ++channel) {
            for (std::int16_t key = 0; key < kKeys; ++key) {
                if (isMeant(event, channel, key)) {
                    notes_[channel][key].isDown = false;
                    play(message(event, kNoteOffStatus, channel, key, 0));
                }
            }
        }
    }

    // All keys are up.
    void reset() { notes_ = {}; }

    // 0 to 1 in MIDI's steps, 1 to 127: MIDI's 0 would end the note. NaN is the softest.
    static std::uint8_t midiVelocity(double velocity);

private:
    static constexpr std::int16_t kChannels = 16;
    static constexpr std::int16_t kKeys = 128;

    struct Note {
        bool isDown = false;
        std::int32_t id = -1; // -1: the host gave none
    };

    // All channels play one instrument: an event for any of them goes to the first.
    static std::int16_t channelOf(const clap::NoteEvent& event) {
        return event.channel >= 0 && event.channel < kChannels ? event.channel : std::int16_t{0};
    }
    static MidiMessage message(const clap::NoteEvent& event, std::uint8_t status,
                               std::int16_t channel, std::int16_t key, std::uint8_t velocity);
    bool isMeant(const clap::NoteEvent& event, std::int16_t channel, std::int16_t key) const;

    std::array<std::array<Note, kKeys>, kChannels> notes_{};
};

} // namespace zelvatone
