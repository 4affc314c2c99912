#include "host/render/BlockEvents.h"

#include "host/Error.h"
#include "host/midi/MidiFileReader.h"
#include "tests/support/MidiFileBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Notes 1, 2, 3... at these samples of a song at 1000 Hz: a tick is a millisecond.
Song songWithNotesAt(const std::vector<std::uint32_t>& samples) {
    TrackBytes track;
    std::uint32_t before = 0;
    int note = 1;
    for (const std::uint32_t sample : samples) {
        track.noteOn(sample - before, note++);
        before = sample;
    }
    return makeSong(parseMidiFile(midiFileBytes(0, 500, {track})));
}

constexpr double kRate = 1000.0;

// Of the events of the next block.
std::vector<int> offsets(BlockEvents& events) {
    std::vector<int> found;
    events.next([&](std::int32_t offset, auto /*message*/) { found.push_back(offset); });
    return found;
}

std::vector<int> framesOf(EventSchedule schedule) {
    std::vector<int> frames;
    for (; !schedule.atEnd(); schedule.advance()) {
        frames.push_back(static_cast<int>(schedule.frame()));
    }
    return frames;
}

TEST(EventSchedule, RoundsAnEventToItsNearestSample) {
    // 120 quarters a minute at 480 ticks: tick 1 lies at 45.9375 samples of 44.1 kHz.
    const Song song = makeSong(parseMidiFile(
        midiFileBytes(0, 480, {TrackBytes().noteOn(1, 60).noteOn(1, 61).noteOn(1, 62)})));
    // 45.9375, 91.875 and 137.8125
    EXPECT_THAT(framesOf(scheduleEvents(song, 44100.0)), ElementsAre(46, 92, 138));
}

TEST(EventSchedule, LeavesOutWhatIsNotWanted) {
    const Song song = songWithNotesAt({0, 1, 2});
    const EventSchedule schedule(song, kRate,
                                 [](const SongEvent& event) { return event.bytes[1] != 2; });
    EXPECT_THAT(framesOf(schedule), ElementsAre(0, 2));
}

TEST(BlockEvents, PutsEachEventIntoItsBlockAtItsOffset) {
    const Song song = songWithNotesAt({0, 9, 10, 15, 39});
    BlockEvents events(scheduleEvents(song, kRate), 10);
    EXPECT_THAT(offsets(events), ElementsAre(0, 9));
    EXPECT_THAT(offsets(events), ElementsAre(0, 5));
    EXPECT_THAT(offsets(events), IsEmpty());
    EXPECT_THAT(offsets(events), ElementsAre(9));
    EXPECT_THAT(offsets(events), IsEmpty());
}

TEST(BlockEvents, CutsBlocksOfOneSample) {
    const Song song = songWithNotesAt({0, 2, 2});
    BlockEvents events(scheduleEvents(song, kRate), 1);
    EXPECT_THAT(offsets(events), ElementsAre(0));
    EXPECT_THAT(offsets(events), IsEmpty());
    EXPECT_THAT(offsets(events), ElementsAre(0, 0));
}

TEST(BlockEvents, CountsTheEventsOfTheFullestBlock) {
    std::vector<std::uint32_t> samples(80, 7);
    samples.insert(samples.end(), 40, 64);
    const Song song = songWithNotesAt(samples);
    BlockEvents events(scheduleEvents(song, kRate), 64);
    EXPECT_EQ(events.most().midi, 80U);
    EXPECT_EQ(events.most().exclusive, 0U);
    EXPECT_EQ(offsets(events).size(), 80U);
}

TEST(BlockEvents, RefusesABlockOfMoreEventsThanMemoryIsSetAsideFor) {
    Song song = songWithNotesAt({});
    song.events.resize((1U << 20U) + 1, {0.0, {0x90, 60, 64}, 3, 0});
    EXPECT_THROW(BlockEvents(scheduleEvents(song, kRate), 1), InputError);
    song.events.pop_back();
    EXPECT_EQ(BlockEvents(scheduleEvents(song, kRate), 1).most().midi, 1U << 20U);
}

TEST(EventRecords, MidiRecordHoldsItsMessage) {
    EventRecords records({.midi = 1, .exclusive = 0});
    EXPECT_EQ(records.list(), nullptr);
    records.add(3, Bytes{0x90, 1, 64});
    const auto* record = reinterpret_cast<const VstMidiEvent*>(records.list()->events[0]);
    EXPECT_EQ(record->type, kVstMidiType);
    EXPECT_EQ(record->byteSize, static_cast<VstInt32>(sizeof(VstMidiEvent)));
    EXPECT_EQ(record->deltaFrames, 3);
    EXPECT_THAT(record->midiData, ElementsAre('\x90', 1, 64, 0));
}

TEST(EventRecords, ExclusiveRecordPointsToItsMessage) {
    const Bytes message{0xF0, 1, 2, 3, 0xF7};
    EventRecords records({.midi = 0, .exclusive = 1});
    records.add(5, message);
    const auto* record = reinterpret_cast<const VstMidiSysexEvent*>(records.list()->events[0]);
    EXPECT_EQ(record->type, kVstSysExType);
    EXPECT_EQ(record->deltaFrames, 5);
    EXPECT_EQ(std::string(record->sysexDump, static_cast<std::size_t>(record->dumpBytes)),
              std::string("\xF0\x01\x02\x03\xF7"));
}

TEST(EventRecords, KindsKeepTheirOrderAndTheirRoom) {
    const Bytes exclusive{0xF0, 0xF7};
    const Bytes note{0x90, 60, 64};
    EventRecords records({.midi = 2, .exclusive = 1});
    records.add(0, note);
    records.add(1, exclusive);
    EXPECT_FALSE(records.isFullFor(note));
    EXPECT_TRUE(records.isFullFor(exclusive));
    records.add(2, note);
    EXPECT_TRUE(records.isFullFor(note));
    VstEvent** entries = records.list()->events;
    ASSERT_EQ(records.list()->numEvents, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(entries[i]->deltaFrames, i);
    }
    records.clear();
    EXPECT_EQ(records.list(), nullptr);
}

} // namespace
} // namespace zelvatone
