#include "cli/commands/PlaySession.h"

#include "cli/terminal/Notice.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zelvatone {

namespace {

using Kind = KeyEvent::Kind;
using Phase = KeyEvent::Phase;

// A key waits for nothing; this is how long a note-off or a notice may.
constexpr std::chrono::milliseconds kTurn{10};
constexpr std::chrono::milliseconds kTending{100};
constexpr std::chrono::milliseconds kShowing{80}; // smooth enough to watch
constexpr int kVelocityStep = 10;

double decibelsOf(float peak) {
    return peak > 0.0F ? 20.0 * std::log10(static_cast<double>(peak))
                       : -std::numeric_limits<double>::infinity();
}

} // namespace

std::string playHelp() {
    return "  Z S X D C V G B H N J M   an octave, by the place of the keys on a US keyboard\n"
           "  Q 2 W 3 E R 5 T 6 Y 7 U   the octave above; both rows go on to the right\n"
           "  left, right               an octave down, up\n"
           "  up, down                  the program before, after\n"
           "  page up, page down        strike harder, softer\n"
           "  space                     sustain pedal\n"
           "  backspace                 panic: end every sound\n"
           "  tab                       learn: choose a parameter by up and down, then move a\n"
           "                            controller of the keyboard\n"
           "  ?                         this help\n"
           "  Ctrl+C or escape          end";
}

PlaySession::PlaySession(const Plan& plan)
    : plan_(plan), piano_(plan.layout), status_(plan.terminal->isOpen()) {
    shown_.isRecording = plan.take != nullptr;
}

void PlaySession::run() {
    while (!isOver_) {
        InterruptWatch::check();
        turn();
    }
}

void PlaySession::turn() {
    const auto bytes = plan_.terminal->read(kTurn);
    if (!bytes) {
        isOver_ = true; // the terminal has gone
        return;
    }
    const auto keys = bytes->empty() ? decoder_.pause() : decoder_.take(*bytes);
    for (const KeyEvent& key : keys) {
        takeKey(key);
    }
    send(piano_.elapse(Clock::now()));
    takeNotices();
    takeEdits();
    const auto now = Clock::now();
    if (now >= nextTending_) {
        nextTending_ = now + kTending;
        tendBackend();
    }
    if (now >= nextShowing_) {
        nextShowing_ = now + kShowing;
        show();
    }
}

void PlaySession::takeKey(const KeyEvent& key) {
    if (key.kind == Kind::kCharacter && key.character == U' ') {
        send(piano_.pressPedal(key.phase));
    } else if (key.kind == Kind::kCharacter && key.character == U'?') {
        if (key.phase != Phase::kRelease) {
            say(playHelp());
        }
    } else if (!takeAction(key)) {
        send(piano_.take(key, Clock::now()));
    }
}

// False when the key is none that does something once.
bool PlaySession::takeAction(const KeyEvent& key) {
    if (key.kind == Kind::kCharacter) {
        return false;
    }
    if (key.phase == Phase::kRelease) {
        return true;
    }
    switch (key.kind) {
    case Kind::kUp:
    case Kind::kDown: {
        const int by = key.kind == Kind::kUp ? -1 : 1;
        isLearning_ ? moveLearned(by) : moveProgram(by);
        break;
    }
    case Kind::kLeft:
        piano_.moveOctave(-1);
        break;
    case Kind::kRight:
        piano_.moveOctave(1);
        break;
    case Kind::kPageUp:
        piano_.moveVelocity(kVelocityStep);
        break;
    case Kind::kPageDown:
        piano_.moveVelocity(-kVelocityStep);
        break;
    case Kind::kBackspace:
        panic();
        break;
    case Kind::kTab:
        learn();
        break;
    default:
        isOver_ = true;
        break;
    }
    return true;
}

void PlaySession::moveProgram(int by) {
    constexpr int kMost = 128; // that a program change can name
    const int count = std::min(static_cast<int>(plan_.programs.size()), kMost);
    if (count > 0) {
        choose((plan_.program + by + count) % count);
    }
}

void PlaySession::choose(int program) {
    send(MidiMessage{.frame = 0,
                     .status = kProgramStatus,
                     .data1 = static_cast<std::uint8_t>(program),
                     .data2 = 0});
    plan_.program = program; // so that a held key goes on from here
}

// What the user does there is played like all else.
void PlaySession::takeEdits() {
    if (plan_.editor == nullptr) {
        return;
    }
    for (const PlayEdit& edit : plan_.editor->takeEdits()) {
        if (edit.isProgram) {
            choose(edit.number);
        } else {
            sendCommand({.kind = LiveCommand::Kind::kMove,
                         .parameter = static_cast<std::int16_t>(edit.number),
                         .value = edit.value});
            learned_ = edit.number; // a knob that was turned is the one to learn
        }
    }
}

void PlaySession::showInEditor(const PlayEdit& edit) const {
    if (plan_.editor != nullptr) {
        plan_.editor->show(edit);
    }
}

void PlaySession::learn() {
    isLearning_ = !isLearning_ && !plan_.parameters.empty();
    isLearning_ ? sayWhatIsLearned() : say("learning is off");
}

void PlaySession::moveLearned(int by) {
    const int count = static_cast<int>(plan_.parameters.size());
    learned_ = (learned_ + by + count) % count;
    sayWhatIsLearned();
}

void PlaySession::sayWhatIsLearned() {
    say(formatText("learning {}: move a controller, or choose another parameter by up and down",
                   plan_.parameters[static_cast<std::size_t>(learned_)]));
}

void PlaySession::panic() {
    send(piano_.releaseAll());
    for (const std::uint8_t controller : {kSustainPedal, kAllNotesOff, kAllSoundOff}) {
        send(MidiMessage{.frame = 0, .status = kControllerStatus, .data1 = controller, .data2 = 0});
    }
}

void PlaySession::sendCommand(const LiveCommand& command) {
    if (!plan_.player->send(command)) {
        say("the sound stands still: a key was lost");
    }
}

void PlaySession::send(const MidiMessage& message) {
    sendCommand({.kind = LiveCommand::Kind::kMessage, .message = message});
}

void PlaySession::send(const std::vector<MidiMessage>& messages) {
    for (const MidiMessage& message : messages) {
        send(message);
    }
}

void PlaySession::takeNotices() {
    LiveNotice notice{};
    while (plan_.player->takeNotice(notice)) {
        takeNotice(notice);
    }
}

void PlaySession::takeNotice(const LiveNotice& notice) {
    switch (notice.kind) {
    case LiveNotice::Kind::kProgram:
        plan_.program = notice.number;
        showInEditor({.isProgram = true, .number = notice.number, .value = 0.0F});
        break;
    case LiveNotice::Kind::kController:
        if (isLearning_ && notice.number != kSustainPedal) {
            isLearning_ = false;
            sendCommand({.kind = LiveCommand::Kind::kMap,
                         .parameter = static_cast<std::int16_t>(learned_),
                         .controller = static_cast<std::uint8_t>(notice.number)});
            say(formatText("controller {} moves {}", notice.number,
                           plan_.parameters[static_cast<std::size_t>(learned_)]));
        }
        break;
    case LiveNotice::Kind::kMove:
        showInEditor({.isProgram = false, .number = notice.number, .value = notice.value});
        break;
    }
}

void PlaySession::tendBackend() {
    const std::string news = plan_.backend->tend();
    if (!news.empty()) {
        say(news);
    }
    if (plan_.take != nullptr && !takeIsOver_ && !plan_.take->isGoingOn()) {
        takeIsOver_ = true;
        shown_.isRecording = false;
        say("the recording has ended early; what was recorded will be kept");
    }
}

void PlaySession::show() {
    const BackendStatus backend = plan_.backend->status();
    const LiveReading reading = plan_.player->read();
    const auto program = static_cast<std::size_t>(plan_.program);
    shown_.program = program < plan_.programs.size() ? plan_.programs[program] : std::string();
    shown_.notes = reading.notes;
    shown_.peakDecibels = decibelsOf(reading.peak);
    shown_.load = static_cast<double>(reading.load);
    shown_.latencySeconds = backend.latencySeconds;
    shown_.lateBlocks = backend.lateBlocks;
    status_.show(shown_);
    sayWhatWasLost(backend.lostMessages + reading.droppedMessages);
}

void PlaySession::sayWhatWasLost(std::int64_t messages) {
    if (messages > toldLost_) {
        say(formatText("too many MIDI messages at once: {} were lost", messages - toldLost_));
        toldLost_ = messages;
    }
}

// In the terminal above the status; else a line of the program's own.
void PlaySession::say(const std::string& line) {
    plan_.terminal->isOpen() ? status_.print(line) : printNotice(line);
}

} // namespace zelvatone
