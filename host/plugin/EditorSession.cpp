#include "host/plugin/EditorSession.h"

#include "host/files/UserPath.h"
#include "host/text/Format.h"

#include <algorithm>

namespace zelvatone {

namespace {

// As most hosts do it.
constexpr std::chrono::nanoseconds kTurn = std::chrono::nanoseconds(std::chrono::seconds(1)) / 30;

// "Organ - Zelvatone". Plug-ins may lack a name, and programs as well.
std::string titleOf(HostedPlugin& plugin) {
    const std::string program = plugin.text(effGetProgramName);
    std::string name = plugin.text(effGetEffectName);
    if (name.empty()) {
        name = userPath(plugin.path()).stem().string();
    }
    return program.empty() ? name : formatText("{} - {}", program, name);
}

} // namespace

EditorSession::EditorSession(HostedPlugin& plugin, WindowUse use)
    : log_(plugin), editor_(plugin), nextTurn_(std::chrono::steady_clock::now()) {
    window_ = openEditorWindow(titleOf(plugin), editor_.size(), use);
    editor_.open(*window_);
}

bool EditorSession::turn() {
    nextTurn_ = std::max(nextTurn_ + kTurn, std::chrono::steady_clock::now());
    if (!window_->handleEvents(nextTurn_)) {
        return false;
    }
    editor_.idle();
    if (const auto size = log_.takeSize()) {
        window_->resize(*size);
    }
    return true;
}

} // namespace zelvatone
