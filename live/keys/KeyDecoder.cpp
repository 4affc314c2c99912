#include "live/keys/KeyDecoder.h"

#include <array>
#include <charconv>
#include <optional>

namespace zelvatone {

namespace {

using Kind = KeyEvent::Kind;
using Phase = KeyEvent::Phase;

constexpr char kEscapeByte = '\x1b';
constexpr int kControlKey = 4; // of the modifiers, which count from 1

// Fields of a sequence: numbers by ';', their parts by ':'; 0 where there is none.
using Fields = std::array<std::array<int, 3>, 2>;

Fields fieldsOf(std::string_view text) {
    Fields fields{};
    std::size_t field = 0;
    std::size_t part = 0;
    while (!text.empty()) {
        int number = 0;
        const auto* const end = std::from_chars(text.data(), text.data() + text.size(), number).ptr;
        if (field < fields.size() && part < fields[field].size()) {
            fields[field][part] = number;
        }
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (text.empty()) {
            break;
        }
        part = text[0] == ':' ? part + 1 : 0;
        field += text[0] == ';' ? 1 : 0;
        text.remove_prefix(1);
    }
    return fields;
}

Phase phaseOf(const Fields& fields, Phase usual) {
    switch (fields[1][1]) {
    case 1:
        return Phase::kPress;
    case 2:
        return Phase::kRepeat;
    case 3:
        return Phase::kRelease;
    default:
        return usual;
    }
}

std::optional<Kind> controlKind(int code) {
    switch (code) {
    case 8:
    case 127:
        return Kind::kBackspace;
    case 9:
        return Kind::kTab;
    case 27:
        return Kind::kEscape;
    case 3:
        return Kind::kInterrupt;
    default:
        return std::nullopt;
    }
}

// "CSI code:shifted:base ; modifiers:phase u"
std::optional<KeyEvent> codedKey(const Fields& fields) {
    constexpr int kFirstPrivate = 57344; // modifier keys and the like
    const int code = fields[0][0];
    KeyEvent event;
    event.phase = phaseOf(fields, Phase::kPress);
    const int modifiers = fields[1][0] == 0 ? 0 : fields[1][0] - 1;
    if ((modifiers & kControlKey) != 0) {
        event.kind = Kind::kInterrupt;
        // The base is the key's letter on a US keyboard, where the own one is of another alphabet.
        return code == 'c' || fields[0][2] == 'c' ? std::optional(event) : std::nullopt;
    }
    if (const auto kind = controlKind(code)) {
        event.kind = *kind;
        return event;
    }
    if (code < ' ' || (code >= kFirstPrivate && code < kFirstPrivate + 6400)) {
        return std::nullopt;
    }
    const int shifted = fields[0][1];
    event.character = static_cast<char32_t>(shifted != 0 ? shifted : code);
    event.place = static_cast<char32_t>(fields[0][2] != 0 ? fields[0][2] : code);
    return event;
}

std::optional<KeyEvent> sequenceKey(std::string_view parameters, char last) {
    const Fields fields = fieldsOf(parameters);
    KeyEvent event;
    event.phase = phaseOf(fields, Phase::kCharacter);
    switch (last) {
    case 'u':
        return codedKey(fields);
    case 'A':
        event.kind = Kind::kUp;
        return event;
    case 'B':
        event.kind = Kind::kDown;
        return event;
    case 'C':
        event.kind = Kind::kRight;
        return event;
    case 'D':
        event.kind = Kind::kLeft;
        return event;
    case '~':
        event.kind = fields[0][0] == 5 ? Kind::kPageUp : Kind::kPageDown;
        return fields[0][0] == 5 || fields[0][0] == 6 ? std::optional(event) : std::nullopt;
    default:
        return std::nullopt;
    }
}

// Bytes of a UTF-8 character that begins so.
std::size_t lengthOf(unsigned char first) {
    return first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

char32_t characterOf(std::string_view bytes) {
    constexpr std::array<unsigned, 5> kFirstMask{0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = static_cast<unsigned char>(bytes[0]) & kFirstMask[bytes.size()];
    for (const char byte : bytes.substr(1)) {
        character = (character << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return character;
}

// A terminal sends a key with Alt as an escape and the character. Takes both off `rest` and returns
// no key: the program has none with Alt. Of two escapes, returns one as the Escape key.
std::optional<KeyEvent> keyAfterEscape(std::string_view& rest, bool& isWhole) {
    if (rest[1] == kEscapeByte) {
        rest.remove_prefix(1);
        KeyEvent event;
        event.kind = Kind::kEscape;
        return event;
    }
    const std::size_t length = 1 + lengthOf(static_cast<unsigned char>(rest[1]));
    isWhole = rest.size() >= length;
    rest.remove_prefix(isWhole ? length : 0);
    return std::nullopt;
}

// Takes one key off `rest`, or what is none; not whole: more bytes must come first.
std::optional<KeyEvent> takeOne(std::string_view& rest, bool& isWhole) {
    isWhole = true;
    if (rest[0] != kEscapeByte) {
        const std::size_t length = lengthOf(static_cast<unsigned char>(rest[0]));
        if (rest.size() < length) {
            isWhole = false;
            return std::nullopt;
        }
        KeyEvent event;
        event.character = characterOf(rest.substr(0, length));
        rest.remove_prefix(length);
        if (const auto kind = controlKind(static_cast<int>(event.character))) {
            event.kind = *kind;
            event.character = 0;
            return event;
        }
        return event.character >= U' ' ? std::optional(event) : std::nullopt;
    }
    if (rest.size() < 2) {
        isWhole = false;
        return std::nullopt;
    }
    if (rest[1] != '[' && rest[1] != 'O') {
        return keyAfterEscape(rest, isWhole);
    }
    const std::size_t last = rest.find_first_not_of("0123456789;:<=>?", 2);
    if (last == std::string_view::npos) {
        constexpr std::size_t kLongest = 64;
        isWhole = rest.size() > kLongest;
        rest.remove_prefix(isWhole ? rest.size() : 0);
        return std::nullopt;
    }
    const auto event = sequenceKey(rest.substr(2, last - 2), rest[last]);
    rest.remove_prefix(last + 1);
    return event;
}

} // namespace

std::vector<KeyEvent> KeyDecoder::take(std::string_view bytes) {
    rest_ += bytes;
    std::string_view rest = rest_;
    std::vector<KeyEvent> keys;
    bool isWhole = true;
    while (!rest.empty() && isWhole) {
        if (const auto key = takeOne(rest, isWhole)) {
            keys.push_back(*key);
        }
    }
    rest_ = std::string(rest);
    return keys;
}

std::vector<KeyEvent> KeyDecoder::pause() {
    if (rest_ != std::string(1, kEscapeByte)) {
        return {};
    }
    rest_.clear();
    KeyEvent event;
    event.kind = Kind::kEscape;
    return {event};
}

} // namespace zelvatone
