#include "host/midi/EndlessNotes.h"

#include <bitset>

namespace zelvatone {

namespace {

constexpr int kNoteOff = 0x80;
constexpr int kNoteOn = 0x90;
constexpr int kController = 0xB0;
constexpr int kAllSoundOff = 120;
constexpr int kAllNotesOff = 123; // and the modes after it, which imply it

} // namespace

int endlessNotes(const Song& song) {
    std::array<std::bitset<128>, 16> sounding;
    for (const SongEvent& event : song.events) {
        auto& notes = sounding[event.bytes[0] & 0x0FU];
        const int kind = event.bytes[0] & 0xF0;
        const std::size_t data = event.bytes[1] & 0x7FU;
        if (kind == kNoteOn) {
            notes.set(data, event.bytes[2] > 0);
        } else if (kind == kNoteOff) {
            notes.reset(data);
        } else if (kind == kController && (data == kAllSoundOff || data >= kAllNotesOff)) {
            notes.reset();
        }
    }
    std::size_t count = 0;
    for (const auto& notes : sounding) {
        count += notes.count();
    }
    return static_cast<int>(count);
}

} // namespace zelvatone
