#include "tests/live/FakeAlsa.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

// The library's own, which its headers leave open.
struct _snd_seq {};
struct _snd_pcm {};
struct _snd_seq_client_info {
    int client;
};
struct _snd_seq_port_info {
    int client;
    int port;
    std::string name;
    unsigned int capability;
};

namespace zelvatone {

namespace {

FakeAlsa* machine = nullptr;
snd_seq_t theSequencer;
snd_pcm_t theCard;

} // namespace

// As the library's functions, for the one machine.
struct FakeFunctions {
    static int noHints(int /*card*/, const char* /*kind*/, void*** /*hints*/) { return -ENOENT; }
    static const char* errorText(int error) { return std::strerror(-error); }

    static int openPcm(snd_pcm_t** pcm, const char* name, snd_pcm_stream_t /*stream*/,
                       int /*mode*/) {
        const std::scoped_lock lock(machine->mutex_);
        if (!machine->hasCard) {
            return -ENODEV;
        }
        machine->openName_ = name;
        ++machine->openPcms;
        *pcm = &theCard;
        return 0;
    }
    static int closePcm(snd_pcm_t* /*pcm*/) {
        --machine->openPcms;
        return 0;
    }
    static int setParams(snd_pcm_t* /*pcm*/, snd_pcm_format_t /*format*/,
                         snd_pcm_access_t /*access*/, unsigned int /*channels*/, unsigned int rate,
                         int mayResample, unsigned int /*latency*/) {
        const std::scoped_lock lock(machine->mutex_);
        if (machine->needsPlug && machine->openName_.rfind("plug:", 0) != 0) {
            return -EINVAL;
        }
        if (mayResample == 0 && machine->onlyRate != 0 &&
            static_cast<int>(rate) != machine->onlyRate) {
            return -EINVAL;
        }
        machine->rate_ = static_cast<int>(rate);
        return 0;
    }
    static int getParams(snd_pcm_t* /*pcm*/, snd_pcm_uframes_t* buffer, snd_pcm_uframes_t* period) {
        *buffer = 768;
        *period = 192;
        return 0;
    }
    // As long as a card takes to play as much, however full its buffer is.
    static snd_pcm_sframes_t write(snd_pcm_t* /*pcm*/, const void* /*samples*/,
                                   snd_pcm_uframes_t frames) {
        if (!machine->hasCard) {
            return -ENODEV;
        }
        if (machine->lateWrites > 0) {
            --machine->lateWrites;
            return -EPIPE;
        }
        std::this_thread::sleep_for(std::chrono::duration<double>(
            static_cast<double>(frames) / static_cast<double>(machine->rate_)));
        machine->framesWritten += static_cast<int>(frames);
        return static_cast<snd_pcm_sframes_t>(frames);
    }
    static int recover(snd_pcm_t* /*pcm*/, int error, int /*silent*/) {
        return error == -EPIPE ? 0 : error;
    }

    static int openSequencer(snd_seq_t** sequencer, const char* /*name*/, int /*streams*/,
                             int /*mode*/) {
        if (!machine->hasSequencer) {
            return -ENOENT;
        }
        *sequencer = &theSequencer;
        return 0;
    }
    static int closeSequencer(snd_seq_t* /*sequencer*/) { return 0; }
    static int setClientName(snd_seq_t* /*sequencer*/, const char* /*name*/) { return 0; }
    static int clientId(snd_seq_t* /*sequencer*/) { return FakeAlsa::kOwnClient; }
    static int createPort(snd_seq_t* /*sequencer*/, const char* name, unsigned int capability,
                          unsigned int /*type*/) {
        const std::scoped_lock lock(machine->mutex_);
        machine->ports_[{FakeAlsa::kOwnClient, 0}] = {name, capability};
        return 0;
    }
    static int connectFrom(snd_seq_t* /*sequencer*/, int /*own*/, int client, int port) {
        const std::scoped_lock lock(machine->mutex_);
        machine->connections_.insert({client, port});
        return 0;
    }
    static int pollDescriptors(snd_seq_t* /*sequencer*/, pollfd* descriptors,
                               unsigned int /*space*/, short events) {
        *descriptors = {.fd = machine->wakeReader_, .events = events, .revents = 0};
        return 1;
    }
    static int input(snd_seq_t* /*sequencer*/, snd_seq_event_t** event) {
        const std::scoped_lock lock(machine->mutex_);
        char byte = 0;
        if (read(machine->wakeReader_, &byte, 1) != 1) {
            return -EAGAIN;
        }
        if (machine->overruns_ > 0) {
            --machine->overruns_;
            return -ENOSPC;
        }
        machine->given_ = machine->events_.front();
        machine->events_.erase(machine->events_.begin());
        *event = &machine->given_;
        return 1;
    }

    static int nextClient(snd_seq_t* /*sequencer*/, snd_seq_client_info_t* info) {
        const std::scoped_lock lock(machine->mutex_);
        for (const auto& [address, port] : machine->ports_) {
            if (address.first > info->client) {
                info->client = address.first;
                return 0;
            }
        }
        return -ENOENT;
    }
    static int nextPort(snd_seq_t* /*sequencer*/, snd_seq_port_info_t* info) {
        const std::scoped_lock lock(machine->mutex_);
        const auto next = machine->ports_.upper_bound({info->client, info->port});
        if (next == machine->ports_.end() || next->first.first != info->client) {
            return -ENOENT;
        }
        info->port = next->first.second;
        info->name = next->second.name;
        info->capability = next->second.capability;
        return 0;
    }
    template<class Info>
    static int make(Info** info) {
        *info = new Info{};
        return 0;
    }
    template<class Info>
    static void destroy(Info* info) {
        delete info;
    }
    static int clientOf(const snd_seq_client_info_t* info) { return info->client; }
    static void setClient(snd_seq_client_info_t* info, int client) { info->client = client; }
    static const char* clientName(snd_seq_client_info_t* /*info*/) { return "Fake"; }
    static int portOf(const snd_seq_port_info_t* info) { return info->port; }
    static void setPort(snd_seq_port_info_t* info, int port) { info->port = port; }
    static void setPortClient(snd_seq_port_info_t* info, int client) { info->client = client; }
    static const char* portName(const snd_seq_port_info_t* info) { return info->name.c_str(); }
    static unsigned int capability(const snd_seq_port_info_t* info) { return info->capability; }
};

FakeAlsa::FakeAlsa() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_NONBLOCK) != 0) {
        throw std::runtime_error("no pipe");
    }
    wakeReader_ = ends[0];
    wakeWriter_ = ends[1];
    ports_[kAnnouncements] = {"Announce", kKeyboard};
    machine = this;
}

FakeAlsa::~FakeAlsa() {
    machine = nullptr;
    close(wakeReader_);
    close(wakeWriter_);
}

alsa::Library FakeAlsa::library() const {
    using F = FakeFunctions;
    alsa::Library functions{};
    functions.errorText = F::errorText;
    functions.deviceNameHint = F::noHints;
    functions.pcmOpen = F::openPcm;
    functions.pcmClose = F::closePcm;
    functions.pcmSetParams = F::setParams;
    functions.pcmGetParams = F::getParams;
    functions.pcmWrite = F::write;
    functions.pcmRecover = F::recover;
    functions.seqOpen = F::openSequencer;
    functions.seqClose = F::closeSequencer;
    functions.seqSetClientName = F::setClientName;
    functions.seqClientId = F::clientId;
    functions.seqCreatePort = F::createPort;
    functions.seqConnectFrom = F::connectFrom;
    functions.seqPollDescriptors = F::pollDescriptors;
    functions.seqEventInput = F::input;
    functions.seqNextClient = F::nextClient;
    functions.seqNextPort = F::nextPort;
    functions.clientInfoMalloc = F::make;
    functions.clientInfoFree = F::destroy;
    functions.clientInfoGetClient = F::clientOf;
    functions.clientInfoSetClient = F::setClient;
    functions.clientInfoGetName = F::clientName;
    functions.portInfoMalloc = F::make;
    functions.portInfoFree = F::destroy;
    functions.portInfoGetPort = F::portOf;
    functions.portInfoSetPort = F::setPort;
    functions.portInfoSetClient = F::setPortClient;
    functions.portInfoGetName = F::portName;
    functions.portInfoGetCapability = F::capability;
    return functions;
}

// With the lock held.
void FakeAlsa::queue(const snd_seq_event_t& event) {
    events_.push_back(event);
    const char byte = 0;
    if (write(wakeWriter_, &byte, 1) != 1) {
        throw std::runtime_error("the pipe is full");
    }
}

void FakeAlsa::announce(snd_seq_event_type type) {
    if (connections_.count(kAnnouncements) == 0) {
        return;
    }
    snd_seq_event_t event{};
    event.type = type;
    event.source = {SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE};
    queue(event);
}

void FakeAlsa::plugIn(Address address, const std::string& name, unsigned int capability) {
    const std::scoped_lock lock(mutex_);
    ports_[address] = {name, capability};
    announce(SND_SEQ_EVENT_PORT_START);
}

void FakeAlsa::unplug(Address address) {
    const std::scoped_lock lock(mutex_);
    ports_.erase(address);
    connections_.erase(address);
    announce(SND_SEQ_EVENT_PORT_EXIT);
}

void FakeAlsa::play(Address address, const snd_seq_event_t& event) {
    const std::scoped_lock lock(mutex_);
    if (connections_.count(address) == 0) {
        return;
    }
    snd_seq_event_t sent = event;
    sent.source = {static_cast<unsigned char>(address.first),
                   static_cast<unsigned char>(address.second)};
    queue(sent);
}

void FakeAlsa::overrun() {
    const std::scoped_lock lock(mutex_);
    ++overruns_;
    const char byte = 0;
    if (write(wakeWriter_, &byte, 1) != 1) {
        throw std::runtime_error("the pipe is full");
    }
}

void FakeAlsa::disconnect(Address address) {
    const std::scoped_lock lock(mutex_);
    connections_.erase(address);
}

std::set<FakeAlsa::Address> FakeAlsa::connections() const {
    const std::scoped_lock lock(mutex_);
    return connections_;
}

std::string FakeAlsa::openName() const {
    const std::scoped_lock lock(mutex_);
    return openName_;
}

snd_seq_event_t noteEvent(snd_seq_event_type type, int channel, int note, int velocity) {
    snd_seq_event_t event{};
    event.type = type;
    event.data.note.channel = static_cast<unsigned char>(channel);
    event.data.note.note = static_cast<unsigned char>(note);
    event.data.note.velocity = static_cast<unsigned char>(velocity);
    return event;
}

snd_seq_event_t controlEvent(snd_seq_event_type type, int channel, int number, int value) {
    snd_seq_event_t event{};
    event.type = type;
    event.data.control.channel = static_cast<unsigned char>(channel);
    event.data.control.param = static_cast<unsigned int>(number);
    event.data.control.value = value;
    return event;
}

} // namespace zelvatone
