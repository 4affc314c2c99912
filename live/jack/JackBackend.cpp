#include "live/jack/JackBackend.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "live/DeviceNames.h"

#include <algorithm>
#include <utility>

namespace zelvatone {

namespace {

constexpr const char* kClientName = "zelvatone";
constexpr std::chrono::seconds kRetry{1};

bool isChannelMessage(const jack::MidiEvent& event) {
    return event.size >= 2 && event.size <= 3 && event.bytes[0] >= kNoteOffStatus &&
           event.bytes[0] < kSystemStatus;
}

// 0 where the message is shorter.
std::uint8_t dataByte(const jack::MidiEvent& event, std::size_t index) {
    return index < event.size ? event.bytes[index] & 0x7FU : std::uint8_t{0};
}

// The name of a port without that of its client's port: "system" of "system:playback_1".
std::string clientOf(const std::string& port) {
    return port.substr(0, port.find(':'));
}

} // namespace

JackBackend::JackBackend(DeviceChoice choice)
    : choice_(std::move(choice)), libraries_(jack::loadLibraries()) {
    if (!open()) {
        return;
    }
    if (choice_.rate && *choice_.rate != format_.rate) {
        const int rate = format_.rate;
        close();
        throw InputError(formatText("the JACK server runs at {} Hz; leave --rate out, or change "
                                    "the server's settings",
                                    rate));
    }
    chooseBuffer();
}

JackBackend::~JackBackend() {
    close();
}

// Tries every library: one of them may have a server that runs.
bool JackBackend::open() {
    for (const jack::Library& library : libraries_) {
        jack_ = &library;
        client_ = library.clientOpen(kClientName, jack::kNoStartServer, nullptr);
        if (client_ != nullptr) {
            format_ = {static_cast<int>(library.getSampleRate(client_)),
                       static_cast<int>(library.getBufferSize(client_))};
            return true;
        }
    }
    return false;
}

void JackBackend::close() {
    if (client_ != nullptr) {
        jack_->clientClose(client_);
        client_ = nullptr;
    }
}

void JackBackend::chooseBuffer() {
    if (!choice_.buffer) {
        return;
    }
    const auto frames = static_cast<jack::Frames>(*choice_.buffer);
    if (jack_->setBufferSize(client_, frames) != 0) {
        close();
        throw InputError(
            formatText("the JACK server does not take a buffer of {} samples", *choice_.buffer));
    }
    format_.buffer = *choice_.buffer;
}

void JackBackend::registerPorts() {
    constexpr std::array<const char*, 2> kNames{"left", "right"};
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        outputs_[i] = jack_->portRegister(client_, kNames[i], jack::kAudioType, jack::kIsOutput, 0);
    }
    keys_ = jack_->portRegister(client_, "keys", jack::kMidiType, jack::kIsInput, 0);
    if (outputs_[0] == nullptr || outputs_[1] == nullptr || keys_ == nullptr) {
        throw InputError("the JACK server gives no ports");
    }
}

void JackBackend::activate() {
    hasGone_ = false;
    registerPorts();
    jack_->setProcessCallback(
        client_,
        [](jack::Frames frames, void* self) {
            static_cast<JackBackend*>(self)->process(frames);
            return 0;
        },
        this);
    jack_->setXrunCallback(
        client_,
        [](void* self) {
            ++static_cast<JackBackend*>(self)->lateBlocks_;
            return 0;
        },
        this);
    jack_->onShutdown(
        client_, [](void* self) { static_cast<JackBackend*>(self)->hasGone_ = true; }, this);
    jack_->setPortRegistrationCallback(
        client_,
        [](jack::PortId, int, void* self) {
            static_cast<JackBackend*>(self)->portsChanged_ = true;
        },
        this);
    if (jack_->activate(client_) != 0) {
        throw InputError("the JACK server does not let the program play");
    }
    linked_.clear();
    portsChanged_ = true;
}

void JackBackend::start(AudioClient& client) {
    audio_ = &client;
    activate();
}

std::string JackBackend::waitForServer() {
    if (std::chrono::steady_clock::now() < nextTry_) {
        return {};
    }
    nextTry_ = std::chrono::steady_clock::now() + kRetry;
    const int rate = format_.rate;
    if (!open()) {
        return {};
    }
    if (format_.rate != rate) {
        throw InputError(formatText("the sound server has come back at {} Hz instead of {}: start "
                                    "again to play with it",
                                    format_.rate, rate));
    }
    activate();
    return "the sound server is back";
}

std::string JackBackend::tend() {
    if (client_ == nullptr) {
        return waitForServer();
    }
    if (hasGone_) {
        close();
        nextTry_ = std::chrono::steady_clock::now() + kRetry;
        return "the sound server has gone: waiting for it";
    }
    return portsChanged_.exchange(false) ? connectAll() : std::string();
}

BackendStatus JackBackend::status() const {
    BackendStatus status;
    status.lateBlocks = lateBlocks_;
    status.lostMessages = lostMessages_;
    if (client_ == nullptr || hasGone_) {
        return status;
    }
    status.isRunning = true;
    jack::LatencyRange range{};
    jack_->portGetLatencyRange(outputs_[0], jack::kPlaybackLatency, &range);
    // A key waits for the next block, and the block for its way to the speaker.
    const auto frames = static_cast<double>(jack_->getBufferSize(client_)) + range.max;
    status.latencySeconds = frames / format_.rate;
    status.isConnected = jack_->portConnected(outputs_[0]) > 0;
    status.keyboards = jack_->portConnected(keys_);
    return status;
}

std::vector<std::string> JackBackend::portsOf(const char* type, unsigned long flags) const {
    std::vector<std::string> names;
    const char** ports = jack_->getPorts(client_, nullptr, type, flags);
    if (ports == nullptr) {
        return names;
    }
    for (const char** port = ports; *port != nullptr; ++port) {
        names.emplace_back(*port);
    }
    jack_->free(static_cast<void*>(ports));
    return names;
}

AudioDevices JackBackend::devices() const {
    return {portsOf(jack::kAudioType, jack::kIsInput), portsOf(jack::kMidiType, jack::kIsOutput)};
}

// Two ports of one device. Without a choice the first that lead to a speaker; PipeWire puts those
// of the default device in front.
std::vector<std::string> JackBackend::chosenOutputs() const {
    if (choice_.output == kNoDevice) {
        return {};
    }
    auto ports = portsOf(jack::kAudioType, jack::kIsInput | jack::kIsPhysical);
    if (choice_.output) {
        ports = portsOf(jack::kAudioType, jack::kIsInput);
        std::erase_if(ports,
                      [this](const auto& port) { return !matchesDevice(port, *choice_.output); });
    }
    const std::string device = ports.empty() ? std::string() : clientOf(ports[0]);
    std::erase_if(ports, [&device](const auto& port) { return clientOf(port) != device; });
    ports.resize(std::min<std::size_t>(ports.size(), 2));
    return ports;
}

std::vector<std::string> JackBackend::chosenInputs() const {
    auto ports = portsOf(jack::kMidiType, jack::kIsOutput);
    std::erase_if(ports, [this](const auto& port) { return !isChosenInput(port, choice_.inputs); });
    return ports;
}

// True when it was made just now.
bool JackBackend::link(const std::string& source, const std::string& target) {
    const std::string both = source + '\n' + target;
    if (linked_.contains(both) || jack_->connect(client_, source.c_str(), target.c_str()) != 0) {
        return false;
    }
    linked_.insert(both);
    return true;
}

std::string JackBackend::connectAll() {
    const auto outputs = chosenOutputs();
    // A device that is taken away and plugged in again is connected again.
    const auto inputs = chosenInputs();
    std::erase_if(linked_, [&](const std::string& both) {
        const std::string source = both.substr(0, both.find('\n'));
        const std::string target = both.substr(both.find('\n') + 1);
        return std::find(inputs.begin(), inputs.end(), source) == inputs.end() &&
               std::find(outputs.begin(), outputs.end(), target) == outputs.end();
    });
    std::string news;
    for (std::size_t i = 0; i < outputs_.size() && !outputs.empty(); ++i) {
        link(jack_->portName(outputs_[i]), outputs[std::min(i, outputs.size() - 1)]);
    }
    for (const std::string& input : inputs) {
        if (link(input, jack_->portName(keys_))) {
            news += (news.empty() ? "playing from " : ", ") + input;
        }
    }
    return news;
}

std::size_t JackBackend::readMessages(jack::Frames frames) {
    void* buffer = jack_->portGetBuffer(keys_, frames);
    const std::uint32_t count = jack_->midiGetEventCount(buffer);
    std::size_t taken = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        jack::MidiEvent event{};
        if (jack_->midiEventGet(&event, buffer, i) != 0 || !isChannelMessage(event)) {
            continue;
        }
        if (taken == messages_.size()) {
            lostMessages_.fetch_add(count - i, std::memory_order_relaxed);
            break;
        }
        messages_[taken++] = {.frame = static_cast<std::int32_t>(event.time),
                              .status = event.bytes[0],
                              .data1 = dataByte(event, 1),
                              .data2 = dataByte(event, 2)};
    }
    return taken;
}

void JackBackend::process(jack::Frames frames) {
    const std::size_t count = readMessages(frames);
    audio_->process(static_cast<float*>(jack_->portGetBuffer(outputs_[0], frames)),
                    static_cast<float*>(jack_->portGetBuffer(outputs_[1], frames)),
                    static_cast<std::int32_t>(frames), std::span(messages_).first(count));
}

} // namespace zelvatone
