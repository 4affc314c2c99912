// A machine's ALSA without ALSA: a sequencer with keyboards that come and go, and one card.
#pragma once

#include "live/alsa/AlsaLibrary.h"

#include <atomic>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zelvatone {

// One at a time. Any thread.
class FakeAlsa {
public:
    using Address = std::pair<int, int>; // client and port

    FakeAlsa();
    ~FakeAlsa();
    FakeAlsa(const FakeAlsa&) = delete;
    FakeAlsa& operator=(const FakeAlsa&) = delete;

    alsa::Library library() const;

    // Keyboards are ports of clients that all are called "Fake".
    void plugIn(Address address, const std::string& name, unsigned int capability = kKeyboard);
    void unplug(Address address);
    // What is played arrives only where it is connected.
    void play(Address address, const snd_seq_event_t& event);
    // The next event is an overrun of the queue.
    void overrun();
    // The user does that with another program.
    void disconnect(Address address);
    std::set<Address> connections() const;

    std::atomic<bool> hasSequencer{true};
    std::atomic<bool> hasCard{true};
    std::atomic<bool> needsPlug{false}; // the card takes no float samples
    std::atomic<int> onlyRate{0};       // without conversion; 0: any
    std::atomic<int> lateWrites{0};     // that are to come
    std::atomic<int> framesWritten{0};
    std::atomic<int> openPcms{0};
    std::string openName() const; // of the card that was opened last
    int rate() const { return rate_; }

    static constexpr unsigned int kKeyboard = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;
    static constexpr Address kAnnouncements{SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE};
    static constexpr int kOwnClient = 128;

private:
    friend struct FakeFunctions;

    struct Port {
        std::string name;
        unsigned int capability;
    };

    void queue(const snd_seq_event_t& event);
    void announce(snd_seq_event_type type);

    mutable std::mutex mutex_; // guards the rest
    std::map<Address, Port> ports_;
    std::set<Address> connections_;
    std::vector<snd_seq_event_t> events_;
    snd_seq_event_t given_{};
    int overruns_ = 0;
    int wakeReader_ = -1; // a pipe: a byte for each event
    int wakeWriter_ = -1;
    std::string openName_;
    std::atomic<int> rate_{0};
};

snd_seq_event_t noteEvent(snd_seq_event_type type, int channel, int note, int velocity);
snd_seq_event_t controlEvent(snd_seq_event_type type, int channel, int number, int value);

} // namespace zelvatone
