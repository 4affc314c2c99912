#include "tour/TourPhrase.h"

#include "performance/Phrase.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zelvatone {

namespace {

std::array<std::uint8_t, 3> message(int status, int key, int velocity) {
    return {static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(key),
            static_cast<std::uint8_t>(velocity)};
}

} // namespace

Song tourPhrase() {
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), kPhraseSeconds, {}, {}};
    for (const PhraseNote& note : kPhraseNotes) {
        song.add(note.start, message(0x90, note.key, kPhraseVelocity));
        song.add(note.end, message(0x80, note.key, 0));
    }
    std::stable_sort(song.events.begin(), song.events.end(),
                     [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
    return song;
}

} // namespace zelvatone
