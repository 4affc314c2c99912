// Turns the bytes of one track chunk into messages at ticks.
#pragma once

#include "host/midi/ByteReader.h"
#include "host/midi/MidiFile.h"

namespace zelvatone {

class MidiTrackParser {
public:
    // `bytes` is the chunk's content; `number` counts tracks from 1, for errors.
    MidiTrackParser(std::span<const std::uint8_t> bytes, int number);

    // Throws InputError when the track is cut short or damaged.
    MidiTrack parse();

private:
    void readMessage();
    void readMeta();
    void readExclusive();
    void readEscape();
    void readChannelMessage();
    void addEscaped(std::span<const std::uint8_t> bytes);
    void add(std::vector<std::uint8_t> bytes);

    ByteReader reader_;
    MidiTrack track_;
    std::int64_t tick_ = 0;
    bool ended_ = false;
    std::uint8_t runningStatus_ = 0;      // 0: none yet
    std::vector<std::uint8_t> exclusive_; // of a message that comes in several packets
};

} // namespace zelvatone
