#include "host/midi/MidiTrackParser.h"

#include <algorithm>
#include <string>
#include <utility>

namespace zelvatone {

namespace {

constexpr std::uint8_t kExclusive = 0xF0;
constexpr std::uint8_t kEscape = 0xF7; // as a message: raw bytes; as a byte: end of an exclusive
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kMetaEndOfTrack = 0x2F;

bool isStatus(std::uint8_t byte) {
    return byte >= 0x80;
}

// Data bytes behind the status of a channel message: program change (0xC0) and channel pressure
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
    : reader_(bytes, "track " + std::to_string(number)) {}

MidiTrack MidiTrackParser::parse() {
    while (!ended_ && !reader_.atEnd()) {
        tick_ += reader_.variableLength();
        readMessage();
        track_.endTick = tick_;
    }
    return std::move(track_);
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
    std::vector<std::uint8_t> bytes{reader_.byte(), reader_.byte()};
    const auto data = reader_.take(reader_.variableLength());
    if (bytes[1] == kMetaEndOfTrack) {
        ended_ = true;
        return;
    }
    bytes.insert(bytes.end(), data.begin(), data.end());
    add(std::move(bytes));
}

void MidiTrackParser::readExclusive() {
    exclusive_.assign(1, reader_.byte());
    const auto data = reader_.take(reader_.variableLength());
    exclusive_.insert(exclusive_.end(), data.begin(), data.end());
    if (exclusive_.back() == kEscape) {
        add(std::exchange(exclusive_, {}));
    }
}

// Either the next packet of an exclusive message, which goes out whole once its last packet is
// there, or bytes that are a message of their own.
void MidiTrackParser::readEscape() {
    reader_.byte();
    const auto data = reader_.take(reader_.variableLength());
    if (exclusive_.empty()) {
        addEscaped(data);
        return;
    }
    exclusive_.insert(exclusive_.end(), data.begin(), data.end());
    if (exclusive_.back() == kEscape) {
        add(std::exchange(exclusive_, {}));
    }
}

// A plug-in takes whole messages only; escaped bytes that are none have nobody to go to.
void MidiTrackParser::addEscaped(std::span<const std::uint8_t> bytes) {
    if (isWholeExclusive(bytes) || isWholeShortMessage(bytes)) {
        add({bytes.begin(), bytes.end()});
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
    std::vector<std::uint8_t> bytes{runningStatus_};
    for (int i = 0; i < dataBytesOf(runningStatus_); ++i) {
        bytes.push_back(reader_.byte());
        if (isStatus(bytes.back())) {
            reader_.fail("a status where data belongs");
        }
    }
    add(std::move(bytes));
}

void MidiTrackParser::add(std::vector<std::uint8_t> bytes) {
    track_.events.push_back({tick_, std::move(bytes)});
}

} // namespace zelvatone
