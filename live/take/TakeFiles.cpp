#include "live/take/TakeFiles.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"
#include "performance/MidiMessage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace zelvatone {

namespace {

using Bytes = std::vector<std::uint8_t>;

// The highest first, as MIDI files have it.
void append(Bytes& bytes, std::uint64_t number, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(number >> static_cast<unsigned>(shift)));
    }
}

void append(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

// A track whose events follow each other.
class Track {
public:
    void add(std::int64_t tick, std::span<const std::uint8_t> message) {
        addDelta(tick - tick_);
        tick_ = tick;
        bytes_.insert(bytes_.end(), message.begin(), message.end());
    }
    const Bytes& bytes() const { return bytes_; }

private:
    // Seven bits a byte, the highest first. What is longer than a delta may be is cut by texts that
    // are empty.
    void addDelta(std::int64_t delta) {
        constexpr std::int64_t kLongest = 0x0FFFFFFF;
        for (; delta > kLongest; delta -= kLongest) {
            addDelta(kLongest);
            bytes_.insert(bytes_.end(), {0xFF, 0x01, 0x00});
        }
        for (int shift = 21; shift > 0; shift -= 7) {
            if (delta >> shift != 0) {
                bytes_.push_back(static_cast<std::uint8_t>(((delta >> shift) & 0x7F) | 0x80));
            }
        }
        bytes_.push_back(static_cast<std::uint8_t>(delta & 0x7F));
    }

    Bytes bytes_;
    std::int64_t tick_ = 0;
};

void addTempo(Track& track, const TempoMap::Change& change) {
    Bytes message{0xFF, 0x51, 3};
    append(message, static_cast<std::uint64_t>(std::llround(change.secondsPerQuarter * 1e6)), 3);
    track.add(change.tick, message);
}

void addMessage(Track& track, std::int64_t tick, const TakeEvent& event) {
    const std::array<std::uint8_t, 3> bytes{event.status, event.data1, event.data2};
    const bool isShort = event.status == kProgramStatus || event.status == kChannelPressureStatus;
    track.add(tick, std::span(bytes).first(isShort ? 2 : 3));
}

} // namespace

Bytes takeMidi(std::span<const TakeEvent> events, std::int64_t frames, const TakeClock& clock) {
    Track track;
    const auto tempos = clock.tempo().changes();
    std::size_t nextTempo = 0;
    const auto addTemposUpTo = [&](std::int64_t tick) {
        for (; nextTempo < tempos.size() && tempos[nextTempo].tick <= tick; ++nextTempo) {
            addTempo(track, tempos[nextTempo]);
        }
    };
    for (const TakeEvent& event : events) {
        if (event.parameter < 0) {
            const std::int64_t tick = clock.tickAt(event.frame);
            addTemposUpTo(tick);
            addMessage(track, tick, event);
        }
    }
    const std::int64_t end = clock.tickAt(frames);
    addTemposUpTo(end);
    track.add(end, Bytes{0xFF, 0x2F, 0});
    constexpr std::size_t kLargestTrack = 0x7FFFFFFF;
    if (track.bytes().size() > kLargestTrack) {
        throw InputError("what was played is too much for a MIDI file");
    }
    Bytes file;
    append(file, "MThd");
    append(file, 6, 4);
    append(file, 0, 2); // one track
    append(file, 1, 2);
    append(file, static_cast<std::uint64_t>(clock.ticksPerQuarter()), 2);
    append(file, "MTrk");
    append(file, track.bytes().size(), 4);
    file.insert(file.end(), track.bytes().begin(), track.bytes().end());
    return file;
}

std::string takeAutomation(std::span<const TakeEvent> events, const std::vector<std::string>& names,
                           int rate, const std::string& command) {
    std::string text = "# " + command;
    // A file's name may have line ends; what follows one would be read as a move.
    std::replace(text.begin(), text.end(), '\n', ' ');
    text += '\n';
    std::set<std::int32_t> moved;
    std::string lines;
    for (const TakeEvent& event : events) {
        if (event.parameter < 0) {
            continue;
        }
        if (moved.insert(event.parameter).second) {
            text += formatText("# parameter {}: {}\n", event.parameter,
                               names[static_cast<std::size_t>(event.parameter)]);
        }
        // A nanosecond is far less than a sample: the frame comes back.
        lines += formatText("{:.9f}, {}, {}\n", static_cast<double>(event.frame) / rate,
                            event.parameter, shortestText(event.value));
    }
    return text + lines;
}

} // namespace zelvatone
