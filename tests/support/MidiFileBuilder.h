// Builds the bytes of MIDI files, whole and broken ones.
#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <vector>

namespace zelvatone {

using Bytes = std::vector<std::uint8_t>;

// The content of a track chunk.
class TrackBytes {
public:
    // `delta` ticks after the event before.
    TrackBytes& event(std::uint32_t delta, std::initializer_list<int> bytes);
    TrackBytes& tempo(std::uint32_t delta, int microsecondsPerQuarter);
    // Notes of velocity 64 on channel 1.
    TrackBytes& noteOn(std::uint32_t delta, int note) { return event(delta, {0x90, note, 64}); }
    // Bytes as they are, delta times included.
    TrackBytes& append(const Bytes& bytes);
    TrackBytes& end(std::uint32_t delta) { return event(delta, {0xFF, 0x2F, 0}); }

    const Bytes& bytes() const { return bytes_; }

private:
    Bytes bytes_;
};

// A whole file; `division` as in the header.
Bytes midiFileBytes(int format, int division, const std::vector<TrackBytes>& tracks);

void writeBytes(const std::filesystem::path& path, const Bytes& bytes);

} // namespace zelvatone
