// Keyboards on ALSA's sequencer: connects them, those that are plugged in later too, and hands on
// what is played.
#pragma once

#include "live/SpscRing.h"
#include "live/alsa/AlsaLibrary.h"
#include "performance/MidiMessage.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zelvatone {

class AlsaKeyboards {
public:
    // Plays from those whose names contain one of `choice`; from all when it is empty. Without a
    // sequencer there are none. `library` must outlive it.
    AlsaKeyboards(const alsa::Library& library, std::vector<std::string> choice);
    ~AlsaKeyboards();
    AlsaKeyboards(const AlsaKeyboards&) = delete;
    AlsaKeyboards& operator=(const AlsaKeyboards&) = delete;

    bool isOpen() const { return sequencer_ != nullptr; }
    // Names of all that can be played from. Before start().
    std::vector<std::string> devices() const;

    // Connects and reads, on a thread of its own, until the end.
    void start();
    // Audio thread. What has come since the last call, by frame of a block of `frames`: as late in
    // it as the message came since then, so that the rhythm stays. Returns how many there are.
    std::size_t take(std::span<MidiMessage> messages, std::int32_t frames, int rate);

    // Any thread.
    int connected() const { return connected_; }
    std::int64_t lostMessages() const { return lostMessages_; }
    // The names of keyboards that have been connected since the last call.
    std::vector<std::string> takeNews();

private:
    using Clock = std::chrono::steady_clock;
    using Address = std::pair<int, int>; // client and port

    struct Port {
        Address address;
        std::string name;
    };
    struct TimedMessage {
        Clock::time_point time;
        MidiMessage message;
    };

    bool open();
    void addPorts(int client, const std::string& clientName, std::vector<Port>& ports) const;
    std::vector<Port> ports() const;
    void run(const std::stop_token& stop);
    void connectAll();
    void readAll();
    void readEvent(const snd_seq_event_t& event);

    const alsa::Library& alsa_;
    std::vector<std::string> choice_;
    snd_seq_t* sequencer_ = nullptr; // null without one; used by one thread at a time
    int keys_ = -1;                  // our port
    std::set<Address> linked_;       // what was connected once is left to the user
    bool portsChanged_ = true;
    std::mutex newsMutex_; // guards news_
    std::vector<std::string> news_;
    SpscRing<TimedMessage> messages_;
    Clock::time_point blockStart_;     // audio thread
    std::optional<TimedMessage> next_; // the same: of the block to come
    std::atomic<int> connected_{0};
    std::atomic<std::int64_t> lostMessages_{0};
    std::jthread thread_; // the last one: it uses the others
};

// None for an event that is no channel message.
std::optional<MidiMessage> channelMessage(const snd_seq_event_t& event);

} // namespace zelvatone
