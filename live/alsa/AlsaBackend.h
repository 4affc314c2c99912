// Live sound through ALSA alone, where no sound server runs.
#pragma once

#include "live/AudioBackend.h"
#include "live/alsa/AlsaKeyboards.h"
#include "live/alsa/AlsaLibrary.h"
#include "live/alsa/AlsaOutput.h"
#include "live/alsa/Pace.h"

#include <array>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace zelvatone {

class AlsaBackend final : public AudioBackend {
public:
    // Check isOpen() afterwards. Throws InputError when an output exists and cannot be had.
    AlsaBackend(const alsa::Library& library, const DeviceChoice& choice);
    ~AlsaBackend() override;

    // Whether there is an output.
    bool isOpen() const { return output_.isOpen(); }
    static AudioDevices devices(const alsa::Library& library);

    std::string name() const override { return "ALSA"; }
    AudioFormat format() const override { return output_.format(); }
    void start(AudioClient& client) override;
    void stop() override { thread_ = {}; }
    std::string tend() override;
    BackendStatus status() const override;

private:
    static constexpr std::size_t kMostMessages = 2048;

    void run(const std::stop_token& stop);
    void playBlock();
    void waitForOutput(const std::stop_token& stop);

    const alsa::Library alsa_; // before what uses it
    AlsaOutput output_;        // the audio thread's, once it has started
    AlsaKeyboards keyboards_;
    AudioClient* audio_ = nullptr;
    Pace pace_;
    std::vector<float> left_;
    std::vector<float> right_;
    std::vector<float> both_;                           // interleaved
    std::array<MidiMessage, kMostMessages> messages_{}; // of the present block
    double latencySeconds_;
    bool hasSaidSequencer_ = false; // the user's thread, as the next one
    bool wasRunning_ = true;
    std::atomic<bool> isRunning_{false};
    std::atomic<std::int64_t> lateBlocks_{0};
    std::jthread thread_; // the last one: it uses the others
};

} // namespace zelvatone
