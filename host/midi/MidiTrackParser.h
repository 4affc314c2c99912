// Reads the bytes of one track chunk, message by message.
#pragma once

#include "host/midi/ByteReader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace zelvatone {

class MidiTrackParser {
public:
    // `bytes` is the chunk's content and outlives the parser; `number` counts tracks from 1, for
    // errors.
    MidiTrackParser(std::span<const std::uint8_t> bytes, int number);

    // Goes to the next message; false at the end of the track. Throws CutShort when the track
    // ends inside a message, InputError when it is damaged.
    bool next();

    // Bytes that the messages so far take.
    std::size_t wholeBytes() const { return wholeBytes_; }
    // Whether the track has said that it ends.
    bool hasEnded() const { return ended_; }
    // Of the message, or after the last one of the end of the track; from the start of the file.
    std::int64_t tick() const { return tick_; }
    // The message, until the next one is read. Channel messages carry their status (running status
    // is resolved); a system exclusive message is whole, 0xF0 to 0xF7; a meta event is 0xFF, its
    // kind, its data.
    std::span<const std::uint8_t> message() const { return message_; }

private:
    void readMessage();
    void readMeta();
    void readExclusive();
    void readEscape();
    void readChannelMessage();
    void endPacket();

    ByteReader reader_;
    std::size_t size_; // of all bytes
    std::size_t wholeBytes_ = 0;
    std::vector<std::uint8_t> message_; // empty: none was read
    std::int64_t tick_ = 0;             // of the last whole message
    bool ended_ = false;
    std::uint8_t runningStatus_ = 0;      // 0: none yet
    std::vector<std::uint8_t> exclusive_; // of a message that comes in several packets
};

} // namespace zelvatone
