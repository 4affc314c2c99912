#include "tour/TourPhrase.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zelvatone {

namespace {

struct Note {
    double start; // seconds
    double end;
    int key; // 60 is middle C
};

// A minor, from the A two octaves below middle C.
constexpr Note kNotes[] = {{0.0, 0.45, 45},  {0.5, 0.7, 52},  {0.75, 0.95, 57}, {1.0, 1.2, 60},
                           {1.25, 1.45, 64}, {1.5, 1.95, 69}, {2.0, 4.5, 45},   {2.0, 4.5, 57},
                           {2.0, 4.5, 60},   {2.0, 4.5, 64}};
constexpr double kPhraseSeconds = 6.0;

std::array<std::uint8_t, 3> message(int status, int key, int velocity) {
    return {static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(key),
            static_cast<std::uint8_t>(velocity)};
}

} // namespace

Song tourPhrase() {
    constexpr int kVelocity = 100; // a firm stroke, as keyboards send it
    Song song{{}, TempoMap(480.0, {}), MeterMap({}), kPhraseSeconds, {}, {}};
    for (const Note& note : kNotes) {
        song.add(note.start, message(0x90, note.key, kVelocity));
        song.add(note.end, message(0x80, note.key, 0));
    }
    std::stable_sort(song.events.begin(), song.events.end(),
                     [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
    return song;
}

} // namespace zelvatone
