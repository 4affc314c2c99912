// The computer's keyboard as a piano: two octaves and more, by the places of the keys.
#pragma once

#include "live/keys/KeyDecoder.h"
#include "performance/MidiMessage.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// Where letters stand, for terminals that tell no places.
enum class KeyLayout { kQwerty, kQwertz, kAzerty };

// "qwerty", "qwertz" or "azerty"; none for anything else.
std::optional<KeyLayout> keyLayoutOf(std::string_view name);
// What is usual where people have this locale, as "de_AT.UTF-8".
KeyLayout usualKeyLayout(std::string_view locale);

// The two lower rows of keys are an octave from C, with the black keys above the white ones; the
// two upper rows go on from the C above.
//
// Of a terminal that tells of releases, a note lasts as long as its key is down. Of others, which
// repeat a held key's character, it ends a while after the last one.
class KeyboardPiano {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit KeyboardPiano(KeyLayout layout) : layout_(layout) {}

    // What a key plays, on channel 1; nothing when the key is no note.
    std::vector<MidiMessage> take(const KeyEvent& key, Time now);
    // Note-offs that are due. Call it often.
    std::vector<MidiMessage> elapse(Time now);
    // Ends what the keys hold.
    std::vector<MidiMessage> releaseAll();
    // The sustain pedal; a terminal that tells of no releases makes a switch of its key.
    std::vector<MidiMessage> pressPedal(KeyEvent::Phase phase);

    void moveOctave(int by);
    void moveVelocity(int by);
    int octave() const { return octave_; } // of the lowest key's C; 4 is that of middle C
    int velocity() const { return velocity_; }
    bool pedalIsDown() const { return pedalIsDown_; }

private:
    struct Held {
        int note;
        Time last;         // character, or press
        bool endsByItself; // no release will come
    };

    char32_t placeOf(const KeyEvent& key) const;
    bool repeats(const Held& held, char32_t place, Time now) const;
    MidiMessage noteOn(int note) const;

    KeyLayout layout_;
    int octave_ = 3;
    int velocity_ = 100;
    bool pedalIsDown_ = false;
    std::map<char32_t, Held> held_; // by place
    char32_t lastPlace_ = 0;        // that sounded last
};

} // namespace zelvatone
