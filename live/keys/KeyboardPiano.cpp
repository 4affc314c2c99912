#include "live/keys/KeyboardPiano.h"

#include <algorithm>
#include <array>

namespace zelvatone {

namespace {

using Phase = KeyEvent::Phase;

// From C upwards, as the keys stand on a US keyboard.
constexpr std::u32string_view kLowerKeys = U"zsxdcvgbhnjm,l.;/";
constexpr std::u32string_view kUpperKeys = U"q2w3er5t6y7ui9o0p[=]";
constexpr int kOctave = 12;
constexpr int kHighestNote = 127;
constexpr int kHighestOctave = 7;

// A held key's first repeat comes after up to 0.6 s with the usual settings, the next ones within
// 0.05 s. A finger needs longer than that to strike a key again.
constexpr std::chrono::milliseconds kHold{700};
constexpr std::chrono::milliseconds kQuickRepeat{70};
constexpr std::chrono::milliseconds kFirstRepeat{240};

struct Exchange {
    char32_t written;
    char32_t place;
};

constexpr std::array<Exchange, 4> kQwertz{{{U'z', U'y'}, {U'y', U'z'}, {U'-', U'/'}, {U'ö', U';'}}};
constexpr std::array<Exchange, 21> kAzerty{
    {{U'a', U'q'},  {U'q', U'a'}, {U'z', U'w'}, {U'w', U'z'}, {U',', U'm'}, {U';', U','},
     {U':', U'.'},  {U'!', U'/'}, {U'm', U';'}, {U'&', U'1'}, {U'é', U'2'}, {U'"', U'3'},
     {U'\'', U'4'}, {U'(', U'5'}, {U'-', U'6'}, {U'è', U'7'}, {U'_', U'8'}, {U'ç', U'9'},
     {U'à', U'0'},  {U'^', U'['}, {U'$', U']'}}};

template<std::size_t count>
char32_t exchanged(const std::array<Exchange, count>& table, char32_t written) {
    const auto* const found =
        std::find_if(table.begin(), table.end(),
                     [written](const auto& entry) { return entry.written == written; });
    return found == table.end() ? written : found->place;
}

char32_t smallLetter(char32_t character) {
    return character >= U'A' && character <= U'Z' ? character + (U'a' - U'A') : character;
}

// Semitones above the lowest C; none for a key without a note.
std::optional<int> stepOf(char32_t place) {
    if (const auto at = kLowerKeys.find(place); at != std::u32string_view::npos) {
        return static_cast<int>(at);
    }
    if (const auto at = kUpperKeys.find(place); at != std::u32string_view::npos) {
        return kOctave + static_cast<int>(at);
    }
    return std::nullopt;
}

MidiMessage noteOff(int note) {
    return {
        .frame = 0, .status = kNoteOffStatus, .data1 = static_cast<std::uint8_t>(note), .data2 = 0};
}

} // namespace

std::optional<KeyLayout> keyLayoutOf(std::string_view name) {
    if (name == "qwerty") {
        return KeyLayout::kQwerty;
    }
    if (name == "qwertz") {
        return KeyLayout::kQwertz;
    }
    return name == "azerty" ? std::optional(KeyLayout::kAzerty) : std::nullopt;
}

KeyLayout usualKeyLayout(std::string_view locale) {
    constexpr std::array<std::string_view, 6> kQwertzLanguages{"de", "cs", "hu", "sk", "sl", "hr"};
    const std::string_view language = locale.substr(0, 2);
    const std::string_view country = locale.size() > 4 ? locale.substr(3, 2) : std::string_view();
    if (country == "CH" || std::find(kQwertzLanguages.begin(), kQwertzLanguages.end(), language) !=
                               kQwertzLanguages.end()) {
        return KeyLayout::kQwertz;
    }
    return language == "fr" && country != "CA" ? KeyLayout::kAzerty : KeyLayout::kQwerty;
}

char32_t KeyboardPiano::placeOf(const KeyEvent& key) const {
    if (key.place != 0) {
        return key.place;
    }
    const char32_t written = smallLetter(key.character);
    switch (layout_) {
    case KeyLayout::kQwertz:
        return exchanged(kQwertz, written);
    case KeyLayout::kAzerty:
        return exchanged(kAzerty, written);
    default:
        return written;
    }
}

// Whether a character comes from a key that is still held.
bool KeyboardPiano::repeats(const Held& held, char32_t place, Time now) const {
    const auto pause = now - held.last;
    return place == lastPlace_ && (pause < kQuickRepeat || pause >= kFirstRepeat);
}

MidiMessage KeyboardPiano::noteOn(int note) const {
    return {.frame = 0,
            .status = kNoteOnStatus,
            .data1 = static_cast<std::uint8_t>(note),
            .data2 = static_cast<std::uint8_t>(velocity_)};
}

std::vector<MidiMessage> KeyboardPiano::take(const KeyEvent& key, Time now) {
    const char32_t place = placeOf(key);
    const auto step = stepOf(place);
    if (key.kind != KeyEvent::Kind::kCharacter || !step || key.phase == Phase::kRepeat) {
        return {};
    }
    std::vector<MidiMessage> messages;
    const auto held = held_.find(place);
    if (held != held_.end()) {
        if (key.phase == Phase::kCharacter && repeats(held->second, place, now)) {
            held->second.last = now;
            return {};
        }
        messages.push_back(noteOff(held->second.note));
        held_.erase(held);
    }
    const int note = (octave_ + 1) * kOctave + *step;
    if (key.phase != Phase::kRelease && note <= kHighestNote) {
        messages.push_back(noteOn(note));
        held_[place] = {note, now, key.phase == Phase::kCharacter};
        lastPlace_ = place;
    }
    return messages;
}

std::vector<MidiMessage> KeyboardPiano::elapse(Time now) {
    std::vector<MidiMessage> messages;
    std::erase_if(held_, [&](const auto& entry) {
        const bool isOver = entry.second.endsByItself && now - entry.second.last >= kHold;
        if (isOver) {
            messages.push_back(noteOff(entry.second.note));
        }
        return isOver;
    });
    return messages;
}

std::vector<MidiMessage> KeyboardPiano::releaseAll() {
    std::vector<MidiMessage> messages;
    for (const auto& [place, held] : held_) {
        messages.push_back(noteOff(held.note));
    }
    held_.clear();
    return messages;
}

std::vector<MidiMessage> KeyboardPiano::pressPedal(KeyEvent::Phase phase) {
    if (phase == Phase::kRepeat) {
        return {};
    }
    pedalIsDown_ = phase == Phase::kCharacter ? !pedalIsDown_ : phase == Phase::kPress;
    return {{.frame = 0,
             .status = kControllerStatus,
             .data1 = kSustainPedal,
             .data2 = static_cast<std::uint8_t>(pedalIsDown_ ? 127 : 0)}};
}

void KeyboardPiano::moveOctave(int by) {
    octave_ = std::clamp(octave_ + by, -1, kHighestOctave);
}

void KeyboardPiano::moveVelocity(int by) {
    velocity_ = std::clamp(velocity_ + by, 1, 127);
}

} // namespace zelvatone
