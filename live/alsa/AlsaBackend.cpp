#include "live/alsa/AlsaBackend.h"

#include <pthread.h>
#include <sched.h>

#include <chrono>
#include <utility>

namespace zelvatone {

namespace {

// Before all that waits for nothing, behind the kernel's own threads for devices (50) and what
// sound servers take.
constexpr int kPriority = 40;

// Where the system lets the process; else it plays as it is.
void raisePriority() {
    const sched_param priority{.sched_priority = kPriority};
    pthread_setschedparam(pthread_self(), SCHED_FIFO, &priority);
}

} // namespace

AlsaBackend::AlsaBackend(const alsa::Library& library, const DeviceChoice& choice)
    : alsa_(library),
      output_(alsa_, choice),
      keyboards_(alsa_, choice.inputs),
      pace_(output_.format().rate, output_.bufferFrames()),
      left_(static_cast<std::size_t>(output_.format().buffer)),
      right_(left_.size()),
      both_(2 * left_.size()),
      // A key waits for the next block, and the block for its way to the speaker.
      latencySeconds_(static_cast<double>(output_.bufferFrames() + output_.format().buffer) /
                      output_.format().rate) {}

AlsaBackend::~AlsaBackend() {
    stop();
}

AudioDevices AlsaBackend::devices(const alsa::Library& library) {
    return {AlsaOutput::devices(library), AlsaKeyboards(library, {}).devices()};
}

void AlsaBackend::start(AudioClient& client) {
    audio_ = &client;
    isRunning_ = true;
    keyboards_.start();
    thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

void AlsaBackend::run(const std::stop_token& stop) {
    raisePriority();
    while (!stop.stop_requested()) {
        output_.isOpen() ? playBlock() : waitForOutput(stop);
    }
}

void AlsaBackend::playBlock() {
    const auto frames = static_cast<std::int32_t>(left_.size());
    const std::size_t count = keyboards_.take(messages_, frames, output_.format().rate);
    audio_->process(left_.data(), right_.data(), frames, std::span(messages_).first(count));
    for (std::size_t i = 0; i < left_.size(); ++i) {
        both_[2 * i] = left_[i];
        both_[2 * i + 1] = right_[i];
    }
    switch (output_.write(both_)) {
    case AlsaOutput::Result::kGone:
        isRunning_ = false;
        return;
    case AlsaOutput::Result::kWrittenLate:
        lateBlocks_.fetch_add(1, std::memory_order_relaxed);
        break;
    case AlsaOutput::Result::kWritten:
        break;
    }
    if (const auto due = pace_.afterBlock(frames, Pace::Clock::now())) {
        std::this_thread::sleep_until(*due);
    }
}

void AlsaBackend::waitForOutput(const std::stop_token& stop) {
    constexpr std::chrono::milliseconds kTurn{50}; // until the end is noticed
    constexpr int kTurns = 20;                     // to a second
    for (int turn = 0; turn < kTurns && !stop.stop_requested(); ++turn) {
        std::this_thread::sleep_for(kTurn);
    }
    isRunning_ = output_.openAgain();
}

std::string AlsaBackend::tend() {
    if (const bool isRunning = isRunning_; isRunning != wasRunning_) {
        wasRunning_ = isRunning;
        return isRunning ? "the output is back" : "the output has gone: waiting for it";
    }
    if (!keyboards_.isOpen()) {
        return std::exchange(hasSaidSequencer_, true)
                   ? std::string()
                   : "no keyboards: ALSA has no sequencer here (modprobe snd-seq starts it)";
    }
    std::string news;
    for (const std::string& name : keyboards_.takeNews()) {
        news += (news.empty() ? "playing from " : ", ") + name;
    }
    return news;
}

BackendStatus AlsaBackend::status() const {
    return {.isRunning = isRunning_,
            .latencySeconds = latencySeconds_,
            .lateBlocks = lateBlocks_,
            .lostMessages = keyboards_.lostMessages(),
            .isConnected = isRunning_,
            .keyboards = keyboards_.connected()};
}

} // namespace zelvatone
