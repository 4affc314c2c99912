#include "host/midi/MidiTrackParser.h"

#include "host/text/Format.h"

#include <algorithm>
#include <string>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;
constexpr std::uint8_t kEscape = 0xF7; // as a message: raw bytes; as a byte: end of an exclusive
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kMetaEndOfTrack = 0x2F;

bool isStatus(std::uint8_t byte) {
    return byte >= 0x80;
}

// Data bytes after the status of a channel message: program change (0xC0) and channel pressure
// (0xD0) have one, all others two.
int dataBytesOf(std::uint8_t status) {
    const unsigned kind = status & 0xF0U;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

bool isWholeExclusive(std::span<const std::uint8_t> bytes) {
    return bytes.size() >= 2 && bytes.front() == kExclusive && bytes.back() == kEscape;
}

// 0xFF is left out: on a wire it is a reset, in a track it would read as a meta event.
bool isWholeShortMessage(std::span<const std::uint8_t> bytes) {
    if (bytes.empty() || !isStatus(bytes[0]) || bytes[0] == kMeta ||
        std::any_of(bytes.begin() + 1, bytes.end(), isStatus)) {
        return false;
    }
    const auto dataBytes = static_cast<int>(bytes.size()) - 1;
    return bytes[0] < kExclusive ? dataBytes == dataBytesOf(bytes[0])
                                 : bytes[0] > kExclusive && dataBytes <= 2;
}

} // namespace

MidiTrackParser::MidiTrackParser(std::span<const std::uint8_t> bytes, int number)
    : reader_(bytes, formatText("track {}", number)), size_(bytes.size()) {}

bool MidiTrackParser::next() {
    message_.clear();
    while (message_.empty() && !ended_ && !reader_.atEnd()) {
        const std::uint32_t delta = reader_.variableLength();
        readMessage();
        tick_ += delta;
        wholeBytes_ = size_ - reader_.remaining();
    }
    return !message_.empty();
}

void MidiTrackParser::readMessage() {
    const std::uint8_t first = reader_.peek();
    if (first == kMeta) {
        readMeta();
    } else if (first == kExclusive) {
        readExclusive();
    } else if (first == kEscape) {
        readEscape();
    } else if (first > kExclusive) {
        reader_.fail("a system message that no track can hold");
    } else {
        readChannelMessage();
    }
}

void MidiTrackParser::readMeta() {
    reader_.byte();
    const std::uint8_t kind = reader_.byte();
    const auto data = reader_.take(reader_.variableLength());
    if (kind == kMetaEndOfTrack) {
        ended_ = true;
        return;
    }
    message_.assign({kMeta, kind});
    message_.insert(message_.end(), data.begin(), data.end());
}

// An exclusive message goes out whole, once its last packet is there.
void MidiTrackParser::endPacket() {
    if (exclusive_.back() == kEscape) {
        message_.swap(exclusive_);
        exclusive_.clear();
    }
}

void MidiTrackParser::readExclusive() {
    exclusive_.assign(1, reader_.byte());
    const auto data = reader_.take(reader_.variableLength());
    exclusive_.insert(exclusive_.end(), data.begin(), data.end());
    endPacket();
}

// Either the next packet of an exclusive message or bytes that are a message of their own. A
// plug-in takes whole messages only; other bytes are dropped.
void MidiTrackParser::readEscape() {
    reader_.byte();
    const auto data = reader_.take(reader_.variableLength());
    if (!exclusive_.empty()) {
        exclusive_.insert(exclusive_.end(), data.begin(), data.end());
        endPacket();
    } else if (isWholeExclusive(data) || isWholeShortMessage(data)) {
        message_.assign(data.begin(), data.end());
    }
}

void MidiTrackParser::readChannelMessage() {
    // Writers in the field let running status reach across meta events, so it is kept there.
    if (isStatus(reader_.peek())) {
        runningStatus_ = reader_.byte();
    }
    if (runningStatus_ == 0) {
        reader_.fail("data without a status");
    }
    message_.assign(1, runningStatus_);
    for (int i = 0; i < dataBytesOf(runningStatus_); ++i) {
        message_.push_back(reader_.byte());
        if (isStatus(message_.back())) {
            reader_.fail("a status where data belongs");
        }
    }
}

} // namespace zelvatone
