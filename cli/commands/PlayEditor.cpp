#include "cli/commands/PlayEditor.h"

#include "host/plugin/EditorSession.h"
#include "host/plugin/Programs.h"

#include <utility>

namespace zelvatone {

PlayEditor::PlayEditor(const PluginLibrary& library, const StreamFormat& format,
                       const PluginSetup& setup)
    : thread_([&, this](const std::stop_token& stop) { run(stop, library, format, setup); }) {
    opened_.get_future().get(); // what the thread was given is used until then alone
}

void PlayEditor::run(const std::stop_token& stop, const PluginLibrary& library,
                     const StreamFormat& format, const PluginSetup& setup) {
    try {
        HostedPlugin plugin(library, format);
        applySetup(plugin, setup);
        turns(stop, plugin);
    } catch (...) {
        if (!hasOpened_) {
            opened_.set_exception(std::current_exception());
        } // else the display has gone, and the sound goes on
    }
    isOpen_ = false;
}

// Until the user closes the window, or the end.
void PlayEditor::turns(const std::stop_token& stop, HostedPlugin& plugin) {
    EditorSession session(plugin, WindowUse::kWork);
    hasOpened_ = true;
    opened_.set_value();
    while (!stop.stop_requested()) {
        showAll(plugin);
        const int program = currentProgram(plugin);
        if (!session.turn()) {
            return;
        }
        if (const int chosen = currentProgram(plugin); chosen != program) {
            add({.isProgram = true, .number = chosen, .value = 0.0F});
        }
        for (const EditNotice& notice : session.log().takeNotices()) {
            if (notice.kind == EditNotice::Kind::kChange && notice.parameter >= 0 &&
                notice.parameter < plugin.parameterCount()) {
                add({.isProgram = false, .number = notice.parameter, .value = notice.value});
            }
        }
    }
}

void PlayEditor::showAll(HostedPlugin& plugin) {
    std::vector<PlayEdit> edits;
    {
        const std::scoped_lock lock(mutex_);
        edits = std::exchange(shown_, {});
    }
    for (const PlayEdit& edit : edits) {
        if (edit.isProgram) {
            selectProgram(plugin, edit.number);
        } else {
            plugin.setParameter(edit.number, edit.value);
        }
    }
}

void PlayEditor::add(const PlayEdit& edit) {
    const std::scoped_lock lock(mutex_);
    edits_.push_back(edit);
}

void PlayEditor::show(const PlayEdit& edit) {
    if (isOpen_) {
        const std::scoped_lock lock(mutex_);
        shown_.push_back(edit);
    }
}

std::vector<PlayEdit> PlayEditor::takeEdits() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(edits_, {});
}

} // namespace zelvatone
