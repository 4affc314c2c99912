// MIDI files, from their bytes to the events of each block.
#include "host/Error.h"
#include "host/midi/MidiFileReader.h"
#include "host/midi/Song.h"
#include "host/render/BlockEvents.h"
#include "tests/fuzz/Fuzzer.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace zelvatone::test {
namespace {

constexpr double kRate = 44100.0;
constexpr int kBlock = 512;
constexpr double kPlayedSeconds = 20.0; // of a song: 1700 blocks take a millisecond
// A position may lie before its bar by a rounding: of its own, and of a nanopart of the longest
// bar.
constexpr double kRounding = 1.0 + 1e-12;
constexpr double kBarRounding = 2e-6; // quarters: 1e-9 of 255 whole notes, doubled

std::optional<Song> songOf(std::span<const std::uint8_t> bytes) {
    try {
        return makeSong(parseMidiFile({bytes.begin(), bytes.end()}));
    } catch (const InputError&) {
        return std::nullopt;
    }
}

// A song has a time for everything, within its own length, and a tempo and a bar at every time.
void checkTimes(const Song& song) {
    double seconds = 0.0;
    for (const SongEvent& event : song.events) {
        require(event.seconds >= seconds, "events are sorted by time");
        seconds = event.seconds;
    }
    require(seconds <= song.seconds, "no event lies after the end of the song");
    for (const double time : {0.0, seconds, song.seconds}) {
        const double tempo = song.tempo.tempoAtSeconds(time);
        require(std::isfinite(tempo) && tempo > 0.0, "the tempo is a positive number");
        const double quarters = song.tempo.quartersAtSeconds(time);
        require(quarters >= 0.0, "no position lies before the start");
        const MeterMap::Bar bar = song.meter.barAt(quarters);
        require(bar.startQuarters <= quarters * kRounding + kBarRounding,
                "a bar starts before the positions in it");
        require(bar.numerator >= 1 && bar.denominator >= 1, "a bar has a length");
    }
}

std::size_t countEventsBefore(const Song& song, std::int64_t end) {
    std::size_t count = 0;
    EventSchedule schedule = scheduleEvents(song, kRate);
    while (!schedule.atEnd() && schedule.frame() < end) {
        ++count;
        schedule.advance();
    }
    return count;
}

void checkBlocks(const Song& song) {
    const auto blocks = static_cast<int>(kPlayedSeconds * kRate) / kBlock;
    const std::size_t expected = countEventsBefore(song, std::int64_t{blocks} * kBlock);
    BlockEvents events(scheduleEvents(song, kRate), kBlock);
    std::size_t played = 0;
    for (int block = 0; block < blocks; ++block) {
        std::size_t count = 0;
        events.next([&](std::int32_t offset, auto /*message*/) {
            require(offset >= 0 && offset < kBlock, "an event lies in its block");
            ++count;
        });
        require(count <= events.most().midi + events.most().exclusive,
                "no block has more than the fullest");
        played += count;
    }
    require(played == expected, "each event is in one block");
}

} // namespace
} // namespace zelvatone::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zelvatone::test;
    if (const auto song = songOf({data, size})) {
        checkTimes(*song);
        checkBlocks(*song);
    }
    return 0;
}
