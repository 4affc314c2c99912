// Keys from the bytes that a terminal sends.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

struct KeyEvent {
    enum class Kind {
        kCharacter,
        kUp,
        kDown,
        kLeft,
        kRight,
        kPageUp,
        kPageDown,
        kBackspace,
        kTab,
        kEscape,
        kInterrupt // Ctrl+C, where the terminal sends it as a key
    };
    // Most terminals tell of characters alone, which a held key repeats.
    enum class Phase { kCharacter, kPress, kRepeat, kRelease };

    Kind kind = Kind::kCharacter;
    Phase phase = Phase::kCharacter;
    char32_t character = 0; // of kCharacter
    char32_t place = 0;     // the same key on a US keyboard, where the terminal tells it; else 0

    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

// Asks a terminal for presses, releases and places of keys, and takes that back. Those that do not
// know it, which are many, ignore both.
inline constexpr std::string_view kAskForPlaces = "\x1b[>15u";
inline constexpr std::string_view kAskNoMore = "\x1b[<u";

class KeyDecoder {
public:
    // The keys that `bytes` complete; what is not a key is left out.
    std::vector<KeyEvent> take(std::string_view bytes);
    // When nothing has come for a moment: an escape character alone is its key.
    std::vector<KeyEvent> pause();

private:
    std::string rest_; // the beginning of a sequence
};

} // namespace zelvatone
