#include "live/alsa/AlsaKeyboards.h"

#include "host/text/Format.h"
#include "live/DeviceNames.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace zelvatone {

namespace {

constexpr const char* kClientName = "zelvatone";
constexpr std::size_t kMessages = 4096; // more than a cable carries in a second
constexpr int kPatience = 50;           // ms until the end is noticed
// Ports without the first kind are hidden by common tools.
constexpr unsigned int kPortTypes =
    SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_SYNTHESIZER | SND_SEQ_PORT_TYPE_APPLICATION;
constexpr unsigned int kWritable = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr unsigned int kReadable = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;

MidiMessage messageOf(int kind, int channel, int data1, int data2) {
    return {.frame = 0,
            .status = static_cast<std::uint8_t>(kind | (channel & 0x0F)),
            .data1 = static_cast<std::uint8_t>(data1 & 0x7F),
            .data2 = static_cast<std::uint8_t>(data2 & 0x7F)};
}

} // namespace

std::optional<MidiMessage> channelMessage(const snd_seq_event_t& event) {
    const snd_seq_ev_note_t& note = event.data.note;
    const snd_seq_ev_ctrl_t& control = event.data.control;
    const auto number = static_cast<int>(control.param);
    switch (event.type) {
    case SND_SEQ_EVENT_NOTEON:
        return messageOf(kNoteOnStatus, note.channel, note.note, note.velocity);
    case SND_SEQ_EVENT_NOTEOFF:
        return messageOf(kNoteOffStatus, note.channel, note.note, note.velocity);
    case SND_SEQ_EVENT_KEYPRESS:
        return messageOf(kKeyPressureStatus, note.channel, note.note, note.velocity);
    case SND_SEQ_EVENT_CONTROLLER:
        return messageOf(kControllerStatus, control.channel, number, control.value);
    case SND_SEQ_EVENT_PGMCHANGE:
        return messageOf(kProgramStatus, control.channel, control.value, 0);
    case SND_SEQ_EVENT_CHANPRESS:
        return messageOf(kChannelPressureStatus, control.channel, control.value, 0);
    case SND_SEQ_EVENT_PITCHBEND: {
        const int bend = control.value + kBendCentre; // ALSA counts from there, MIDI from 0
        return messageOf(kBendStatus, control.channel, bend, bend >> 7);
    }
    default:
        return std::nullopt;
    }
}

AlsaKeyboards::AlsaKeyboards(const alsa::Library& library, std::vector<std::string> choice)
    : alsa_(library), choice_(std::move(choice)), messages_(kMessages) {
    if (!open() && sequencer_ != nullptr) {
        alsa_.seqClose(sequencer_);
        sequencer_ = nullptr;
    }
}

AlsaKeyboards::~AlsaKeyboards() {
    thread_ = {};
    if (sequencer_ != nullptr) {
        alsa_.seqClose(sequencer_);
    }
}

bool AlsaKeyboards::open() {
    if (alsa_.seqOpen(&sequencer_, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK) < 0) {
        sequencer_ = nullptr;
        return false;
    }
    alsa_.seqSetClientName(sequencer_, kClientName);
    keys_ = alsa_.seqCreatePort(sequencer_, "keys", kWritable, kPortTypes);
    return keys_ >= 0;
}

void AlsaKeyboards::addPorts(int client, const std::string& clientName,
                             std::vector<Port>& ports) const {
    snd_seq_port_info_t* made = nullptr;
    alsa_.portInfoMalloc(&made);
    const std::unique_ptr<snd_seq_port_info_t, decltype(alsa_.portInfoFree)> info(
        made, alsa_.portInfoFree);
    alsa_.portInfoSetClient(made, client);
    alsa_.portInfoSetPort(made, -1); // before the first
    while (alsa_.seqNextPort(sequencer_, made) >= 0) {
        const unsigned int capability = alsa_.portInfoGetCapability(made);
        if ((capability & kReadable) == kReadable &&
            (capability & SND_SEQ_PORT_CAP_NO_EXPORT) == 0) {
            ports.push_back({{client, alsa_.portInfoGetPort(made)},
                             formatText("{}:{}", clientName, alsa_.portInfoGetName(made))});
        }
    }
}

// All that send, but our own and the system's timer and announcements.
std::vector<AlsaKeyboards::Port> AlsaKeyboards::ports() const {
    std::vector<Port> ports;
    snd_seq_client_info_t* made = nullptr;
    alsa_.clientInfoMalloc(&made);
    const std::unique_ptr<snd_seq_client_info_t, decltype(alsa_.clientInfoFree)> info(
        made, alsa_.clientInfoFree);
    alsa_.clientInfoSetClient(made, -1);
    const int own = alsa_.seqClientId(sequencer_);
    while (alsa_.seqNextClient(sequencer_, made) >= 0) {
        const int client = alsa_.clientInfoGetClient(made);
        if (client != own && client != SND_SEQ_CLIENT_SYSTEM) {
            addPorts(client, alsa_.clientInfoGetName(made), ports);
        }
    }
    return ports;
}

std::vector<std::string> AlsaKeyboards::devices() const {
    std::vector<std::string> names;
    if (isOpen()) {
        for (const Port& port : ports()) {
            names.push_back(port.name);
        }
    }
    return names;
}

void AlsaKeyboards::start() {
    blockStart_ = Clock::now();
    if (isOpen()) {
        thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
    }
}

void AlsaKeyboards::run(const std::stop_token& stop) {
    alsa_.seqConnectFrom(sequencer_, keys_, SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE);
    pollfd descriptor{};
    alsa_.seqPollDescriptors(sequencer_, &descriptor, 1, POLLIN);
    while (!stop.stop_requested()) {
        if (std::exchange(portsChanged_, false)) {
            connectAll();
        }
        if (poll(&descriptor, 1, kPatience) > 0) {
            readAll();
        }
    }
}

void AlsaKeyboards::connectAll() {
    std::vector<Port> found = ports();
    std::erase_if(found, [this](const Port& port) { return !isChosenInput(port.name, choice_); });
    // One that is taken away and plugged in again is connected again.
    std::erase_if(linked_, [&found](const Address& address) {
        return std::none_of(found.begin(), found.end(),
                            [&address](const Port& port) { return port.address == address; });
    });
    for (const Port& port : found) {
        if (linked_.insert(port.address).second &&
            alsa_.seqConnectFrom(sequencer_, keys_, port.address.first, port.address.second) == 0) {
            const std::scoped_lock lock(newsMutex_);
            news_.push_back(port.name);
        }
    }
    connected_ = static_cast<int>(linked_.size());
}

void AlsaKeyboards::readAll() {
    while (true) {
        snd_seq_event_t* event = nullptr;
        const int result = alsa_.seqEventInput(sequencer_, &event);
        if (result == -ENOSPC) { // the kernel's queue was full, and has been emptied
            lostMessages_.fetch_add(1, std::memory_order_relaxed);
        } else if (result < 0 || event == nullptr) {
            return;
        } else {
            readEvent(*event);
        }
    }
}

void AlsaKeyboards::readEvent(const snd_seq_event_t& event) {
    if (event.source.client == SND_SEQ_CLIENT_SYSTEM) {
        portsChanged_ = true; // a port that comes, goes or changes
    } else if (const auto message = channelMessage(event)) {
        if (!messages_.write({Clock::now(), *message})) {
            lostMessages_.fetch_add(1, std::memory_order_relaxed);
        }
    }
}

std::vector<std::string> AlsaKeyboards::takeNews() {
    const std::scoped_lock lock(newsMutex_);
    return std::exchange(news_, {});
}

std::size_t AlsaKeyboards::take(std::span<MidiMessage> messages, std::int32_t frames, int rate) {
    const auto start = std::exchange(blockStart_, Clock::now());
    std::size_t count = 0;
    while (count < messages.size()) {
        TimedMessage timed{};
        if (next_) {
            timed = *std::exchange(next_, std::nullopt);
        } else if (!messages_.read(timed)) {
            break;
        }
        if (timed.time >= blockStart_) { // after this block has begun
            next_ = timed;
            break;
        }
        const std::chrono::duration<double> since = timed.time - start;
        messages[count] = timed.message;
        messages[count++].frame =
            std::clamp(static_cast<std::int32_t>(since.count() * rate), 0, frames - 1);
    }
    return count;
}

} // namespace zelvatone
