#include "clap/NoteTracker.h"

#include <cmath>

namespace zelvatone {

std::uint8_t NoteTracker::midiVelocity(double velocity) {
    if (!(velocity > 0.0)) {
        return 1;
    }
    const double steps = std::round(std::fmin(velocity, 1.0) * 127.0);
    return static_cast<std::uint8_t>(std::fmax(steps, 1.0));
}

MidiMessage NoteTracker::message(const clap::NoteEvent& event, std::uint8_t status,
                                 std::int16_t channel, std::int16_t key, std::uint8_t velocity) {
    return {.frame = static_cast<std::int32_t>(event.header.time),
            .status = static_cast<std::uint8_t>(status | channel),
            .data1 = static_cast<std::uint8_t>(key),
            .data2 = velocity};
}

bool NoteTracker::isMeant(const clap::NoteEvent& event, std::int16_t channel,
                          std::int16_t key) const {
    const Note& note = notes_[channel][key];
    return note.isDown && (event.channel < 0 || event.channel == channel) &&
           (event.key < 0 || event.key == key) && (event.noteId < 0 || event.noteId == note.id);
}

} // namespace zelvatone
