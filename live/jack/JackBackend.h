// Live sound through a JACK server, which PipeWire is too.
#pragma once

#include "live/AudioBackend.h"
#include "live/jack/JackLibrary.h"

#include <array>
#include <atomic>
#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace zelvatone {

class JackBackend final : public AudioBackend {
public:
    // No server is started. Check isOpen() afterwards. Throws InputError for a rate or a buffer
    // that the server does not have.
    explicit JackBackend(DeviceChoice choice);
    ~JackBackend() override;

    // Whether there is a server that takes clients.
    bool isOpen() const { return client_ != nullptr; }
    // What can be connected.
    AudioDevices devices() const;

    std::string name() const override { return "JACK"; }
    AudioFormat format() const override { return format_; }
    void start(AudioClient& client) override;
    void stop() override { close(); }
    std::string tend() override;
    BackendStatus status() const override;

private:
    // More than a MIDI cable carries in a second of the longest block.
    static constexpr std::size_t kMostMessages = 2048;

    bool open();
    void close();
    void chooseBuffer();
    void registerPorts();
    void activate();
    std::string waitForServer();
    std::vector<std::string> portsOf(const char* type, unsigned long flags) const;
    std::vector<std::string> chosenOutputs() const;
    std::vector<std::string> chosenInputs() const;
    bool link(const std::string& source, const std::string& target);
    std::string connectAll();
    void process(jack::Frames frames);
    std::size_t readMessages(jack::Frames frames);

    DeviceChoice choice_;
    std::vector<jack::Library> libraries_;
    const jack::Library* jack_ = nullptr; // the one with a server
    jack::Client* client_ = nullptr;      // null while there is no server
    std::array<jack::Port*, 2> outputs_{};
    jack::Port* keys_ = nullptr;
    AudioFormat format_{};
    AudioClient* audio_ = nullptr;
    std::set<std::string> linked_; // what was connected once is left to the user
    std::chrono::steady_clock::time_point nextTry_;
    std::array<MidiMessage, kMostMessages> messages_{}; // of the present block
    std::atomic<bool> hasGone_{false};
    std::atomic<bool> portsChanged_{false};
    std::atomic<std::int64_t> lateBlocks_{0};
    std::atomic<std::int64_t> lostMessages_{0};
};

} // namespace zelvatone
