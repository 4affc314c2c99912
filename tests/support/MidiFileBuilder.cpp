#include "tests/support/MidiFileBuilder.h"

#include <fstream>

namespace zelvatone {

namespace {

void append(Bytes& bytes, std::uint32_t number, int count) {
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
    }
}

void append(Bytes& bytes, const char* text) {
    for (; *text != '\0'; ++text) {
        bytes.push_back(static_cast<std::uint8_t>(*text));
    }
}

} // namespace

TrackBytes& TrackBytes::event(std::uint32_t delta, std::initializer_list<int> bytes) {
    for (int shift = 21; shift > 0; shift -= 7) {
        if (delta >> shift != 0) {
            bytes_.push_back(static_cast<std::uint8_t>(0x80U | (delta >> shift)));
        }
    }
    bytes_.push_back(static_cast<std::uint8_t>(delta & 0x7FU));
    for (const int byte : bytes) {
        bytes_.push_back(static_cast<std::uint8_t>(byte));
    }
    return *this;
}

TrackBytes& TrackBytes::tempo(std::uint32_t delta, int microsecondsPerQuarter) {
    return event(delta, {0xFF, 0x51, 3, microsecondsPerQuarter >> 16, microsecondsPerQuarter >> 8,
                         microsecondsPerQuarter});
}

TrackBytes& TrackBytes::append(const Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
}

Bytes midiFileBytes(int format, int division, const std::vector<TrackBytes>& tracks) {
    Bytes bytes;
    append(bytes, "MThd");
    append(bytes, 6, 4);
    append(bytes, static_cast<std::uint32_t>(format), 2);
    append(bytes, static_cast<std::uint32_t>(tracks.size()), 2);
    append(bytes, static_cast<std::uint32_t>(division), 2);
    for (const TrackBytes& track : tracks) {
        append(bytes, "MTrk");
        append(bytes, static_cast<std::uint32_t>(track.bytes().size()), 4);
        bytes.insert(bytes.end(), track.bytes().begin(), track.bytes().end());
    }
    return bytes;
}

void writeBytes(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

} // namespace zelvatone
