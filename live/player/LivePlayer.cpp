#include "live/player/LivePlayer.h"

#include "host/audio/NonFinite.h"
#include "live/player/FloatingPointMode.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace zelvatone {

namespace {

constexpr std::size_t kCommands = 1024; // a block is far shorter than the user's next turn
constexpr std::size_t kNotices = 4096;
constexpr std::uint8_t kSwitchOn = 64;   // from here on
constexpr std::uint8_t kDrumChannel = 9; // from 0

bool isForInstrument(const SongEvent& event) {
    return event.bytes[0] < kSystemStatus && (event.bytes[0] & 0x0F) != kDrumChannel;
}

// Before it is switched on, when a plug-in may choose how carefully it renders.
HostedPlugin* playedLive(HostedPlugin* plugin) {
    if (plugin != nullptr) {
        HostServices::of(plugin->record()).setLive();
    }
    return plugin;
}

void raise(std::atomic<float>& most, float value) {
    if (value > most.load(std::memory_order_relaxed)) {
        most.store(value, std::memory_order_relaxed); // one writer; a reader's reset may be lost
    }
}

} // namespace

LivePlayer::LivePlayer(const Plan& plan)
    : blockSize_(plan.plugin->format().blockSize),
      rate_(plan.plugin->format().sampleRate),
      transport_(*plan.song, rate_),
      performer_(*playedLive(plan.plugin), transport_,
                 {.programs = plan.programs, .spare = playedLive(plan.spare)}),
      clock_(plan.song->tempo, static_cast<int>(rate_)),
      take_(plan.take),
      programs_(plan.programs),
      controllers_(plan.controllers),
      pending_(kMostPending),
      block_(static_cast<std::size_t>(blockSize_) *
             static_cast<std::size_t>(performer_.channels())),
      commands_(kCommands),
      notices_(kNotices) {
    if (!plan.song->events.empty()) {
        song_.emplace(*plan.song, rate_, isForInstrument);
    }
    songIsOver_ = !song_;
}

// After those of the same sample. The last one is the latest nearly always, so little moves.
void LivePlayer::receive(std::int64_t frame, const MidiMessage& message) {
    if (pendingCount_ == pending_.size()) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    const std::int64_t place = clock_.nextFrame(std::max(frame, performer_.position()));
    std::size_t at = pendingCount_++;
    for (; at > 0 && pending_[at - 1].frame > place; --at) {
        pending_[at] = pending_[at - 1];
    }
    pending_[at] = {place, message};
    pending_[at].message.status = message.kind(); // on channel 1
}

void LivePlayer::makeMove(std::int16_t parameter, float value) {
    performer_.setParameter(parameter, value);
    if (take_ != nullptr) {
        take_->add({.frame = performer_.position(),
                    .parameter = parameter,
                    .value = value,
                    .status = 0,
                    .data1 = 0,
                    .data2 = 0});
    }
}

void LivePlayer::takeCommands() {
    LiveCommand command{};
    while (commands_.read(command)) {
        switch (command.kind) {
        case LiveCommand::Kind::kMessage:
            receive(performer_.position(), command.message);
            break;
        case LiveCommand::Kind::kMove:
            makeMove(command.parameter, command.value);
            break;
        case LiveCommand::Kind::kMap:
            controllers_[command.controller % kControllers] = command.parameter;
            break;
        }
    }
}

void LivePlayer::takeSong() {
    if (!song_ || songIsOver_) {
        return;
    }
    const std::int64_t end = performer_.position() + blockSize_;
    for (; !song_->atEnd() && song_->frame() < end; song_->advance()) {
        receive(song_->frame(), midiMessage(0, song_->message()));
    }
    songIsOver_ = song_->atEnd();
}

// Parameters move at the starts of blocks, as automation does.
void LivePlayer::moveByControllers(std::int64_t end) {
    for (std::size_t i = 0; i < pendingCount_ && pending_[i].frame < end; ++i) {
        const MidiMessage& message = pending_[i].message;
        if (message.kind() != kControllerStatus) {
            continue;
        }
        const std::uint8_t number = message.data1 & 0x7F;
        const float value = controllerShare(message.data2 & 0x7F);
        tell({LiveNotice::Kind::kController, number, value});
        if (const std::int16_t parameter = controllers_[number]; parameter >= 0) {
            makeMove(parameter, value);
            tell({LiveNotice::Kind::kMove, parameter, value});
        }
    }
}

// What the display counts.
void LivePlayer::follow(const MidiMessage& message) {
    const std::size_t note = message.data1 & 0x7F;
    if (message.kind() == kNoteOnStatus && message.data2 > 0) {
        notes_.set(note);
        sustained_.reset(note);
    } else if (message.kind() == kNoteOnStatus || message.kind() == kNoteOffStatus) {
        sustained_.set(note, pedalIsDown_ && notes_.test(note));
        notes_.reset(note);
    } else if (message.kind() == kProgramStatus && programs_[note] >= 0) {
        tell({LiveNotice::Kind::kProgram, programs_[note], 0.0F});
    } else if (message.kind() == kControllerStatus) {
        if (message.data1 == kSustainPedal) {
            pedalIsDown_ = message.data2 >= kSwitchOn;
        } else if (message.data1 == kAllSoundOff || message.data1 == kAllNotesOff) {
            notes_.reset();
        }
        if (!pedalIsDown_ || message.data1 == kAllSoundOff) {
            sustained_.reset();
        }
    }
}

void LivePlayer::playMessages(std::int64_t end) {
    const std::int64_t start = performer_.position();
    std::size_t count = 0;
    for (; count < pendingCount_ && pending_[count].frame < end; ++count) {
        const MidiMessage& message = pending_[count].message;
        const std::array<std::uint8_t, 3> bytes{message.status, message.data1, message.data2};
        performer_.take(static_cast<std::int32_t>(pending_[count].frame - start),
                        std::span(bytes).first(message.length()));
        follow(message);
        if (take_ != nullptr) {
            take_->add({.frame = pending_[count].frame,
                        .parameter = kNoParameter,
                        .value = 0.0F,
                        .status = message.status,
                        .data1 = message.data1,
                        .data2 = message.data2});
        }
    }
    std::copy(pending_.begin() + static_cast<std::ptrdiff_t>(count),
              pending_.begin() + static_cast<std::ptrdiff_t>(pendingCount_), pending_.begin());
    pendingCount_ -= count;
}

void LivePlayer::renderBlock() {
    const std::int64_t end = performer_.position() + blockSize_;
    takeCommands();
    takeSong();
    moveByControllers(end);
    performer_.beginBlock(blockSize_);
    playMessages(end);
    performer_.endBlock();
    finishBlock();
}

// The sum with 0 is that of a rendering's mix: it makes of -0 a 0.
void LivePlayer::finishBlock() {
    const auto channels = static_cast<std::size_t>(performer_.channels());
    for (std::size_t channel = 0; channel < channels; ++channel) {
        const float* output = performer_.output(static_cast<int>(channel));
        for (std::size_t i = channel; i < block_.size(); i += channels) {
            block_[i] = 0.0F + *output++;
        }
    }
    silenceNonFinite(block_);
    float peak = 0.0F;
    for (const float sample : block_) {
        peak = std::max(peak, std::abs(sample));
    }
    raise(peak_, peak);
    noteCount_.store(static_cast<int>((notes_ | sustained_).count()), std::memory_order_relaxed);
    if (take_ != nullptr) {
        take_->add(block_);
    }
    ready_ = blockSize_;
}

void LivePlayer::measure(std::int64_t nanoseconds, std::int32_t frames) {
    const double allowed = static_cast<double>(frames) / rate_ * 1e9;
    raise(load_, static_cast<float>(static_cast<double>(nanoseconds) / allowed));
}

void LivePlayer::process(float* left, float* right, std::int32_t frames,
                         std::span<const MidiMessage> messages) noexcept {
    const FloatingPointMode mode;
    const auto start = std::chrono::steady_clock::now();
    // Where blocks do not meet, a message waits until the block that it belongs to is certain not
    // to be rendered yet: all wait equally long, so that the rhythm stays.
    const bool blocksMeet = ready_ == 0 && frames % blockSize_ == 0;
    const std::int64_t delay = blocksMeet ? 0 : blockSize_ - 1;
    for (const MidiMessage& message : messages) {
        receive(heard_ + message.frame + delay, message);
    }
    const auto channels = static_cast<std::size_t>(performer_.channels());
    for (std::int32_t done = 0; done < frames;) {
        if (ready_ == 0) {
            renderBlock();
        }
        const std::int32_t count = std::min(ready_, frames - done);
        const float* source =
            block_.data() + static_cast<std::size_t>(blockSize_ - ready_) * channels;
        for (std::int32_t i = done; i < done + count; ++i, source += channels) {
            left[i] = source[0];
            right[i] = source[channels - 1];
        }
        ready_ -= count;
        done += count;
    }
    heard_ += frames;
    const auto taken = std::chrono::steady_clock::now() - start;
    measure(std::chrono::duration_cast<std::chrono::nanoseconds>(taken).count(), frames);
}

LiveReading LivePlayer::read() {
    return {.peak = peak_.exchange(0.0F),
            .notes = noteCount_,
            .load = load_.exchange(0.0F),
            .droppedMessages = dropped_};
}

} // namespace zelvatone
