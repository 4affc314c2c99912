// A session of live play, from its first sound to its last: reads the terminal's keys, shows what
// goes on, and passes between player, editor and recording what each must know.
#pragma once

#include "cli/commands/PlayEditor.h"
#include "cli/terminal/RawTerminal.h"
#include "cli/terminal/StatusLine.h"
#include "live/AudioBackend.h"
#include "live/keys/KeyboardPiano.h"
#include "live/player/LivePlayer.h"
#include "live/take/TakeWriter.h"

#include <chrono>
#include <string>
#include <vector>

namespace zelvatone {

class PlaySession {
public:
    struct Plan {
        LivePlayer* player = nullptr; // none is owned; all must outlive the session
        AudioBackend* backend = nullptr;
        const TakeWriter* take = nullptr; // null: no recording
        PlayEditor* editor = nullptr;     // null: no window
        const RawTerminal* terminal = nullptr;
        std::vector<std::string> programs;
        std::vector<std::string> parameters;
        int program = 0; // the current one
        KeyLayout layout = KeyLayout::kQwerty;
    };

    explicit PlaySession(const Plan& plan);

    // Until the user has ended it. Throws InputError when playing cannot go on, and Interrupted.
    void run();

private:
    using Clock = std::chrono::steady_clock;

    void turn();
    void takeKey(const KeyEvent& key);
    bool takeAction(const KeyEvent& key);
    void moveProgram(int by);
    void moveLearned(int by);
    void learn();
    void sayWhatIsLearned();
    void panic();
    void send(const MidiMessage& message);
    void send(const std::vector<MidiMessage>& messages);
    void sendCommand(const LiveCommand& command);
    void takeNotices();
    void takeNotice(const LiveNotice& notice);
    void takeEdits();
    void showInEditor(const PlayEdit& edit) const;
    void choose(int program);
    void tendBackend();
    void show();
    void sayWhatWasLost(std::int64_t messages);
    void say(const std::string& line);

    Plan plan_;
    KeyDecoder decoder_;
    KeyboardPiano piano_;
    StatusLine status_;
    PlayStatus shown_;
    bool isLearning_ = false;
    int learned_ = 0; // the parameter that the next controller will move
    bool isOver_ = false;
    bool takeIsOver_ = false;
    std::int64_t toldLost_ = 0; // messages
    Clock::time_point nextTending_;
    Clock::time_point nextShowing_;
};

// What the keys do, for the terminal.
std::string playHelp();

} // namespace zelvatone
