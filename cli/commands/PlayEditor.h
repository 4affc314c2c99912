// The plug-in's editor beside live play, both ways live.
#pragma once

#include "cli/commands/SetupOptions.h"
#include "host/plugin/HostedPlugin.h"
#include "host/plugin/PluginLibrary.h"

#include <atomic>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace zelvatone {

// What changed: a parameter, or the program.
struct PlayEdit {
    bool isProgram;
    int number;
    float value; // of a parameter, normalised
};

// The editor belongs to an instance of its own, on a thread of its own: the one that sounds belongs
// to the audio thread, and gets every move at the start of a block, so that a recording has it.
class PlayEditor {
public:
    // Opens the window. Throws InputError when that fails. `library` must outlive this.
    PlayEditor(const PluginLibrary& library, const StreamFormat& format, const PluginSetup& setup);
    // Closes it.
    ~PlayEditor() = default;
    PlayEditor(const PlayEditor&) = delete;
    PlayEditor& operator=(const PlayEditor&) = delete;

    // Shows what changed elsewhere. Nothing once the user has closed the window.
    void show(const PlayEdit& edit);
    // What the user changed since it was asked last, in order.
    std::vector<PlayEdit> takeEdits();

private:
    void run(const std::stop_token& stop, const PluginLibrary& library, const StreamFormat& format,
             const PluginSetup& setup);
    void turns(const std::stop_token& stop, HostedPlugin& plugin);
    void showAll(HostedPlugin& plugin);
    void add(const PlayEdit& edit);

    std::promise<void> opened_;
    bool hasOpened_ = false; // of the thread
    std::atomic<bool> isOpen_{true};
    std::mutex mutex_; // guards the lists
    std::vector<PlayEdit> shown_;
    std::vector<PlayEdit> edits_;
    std::jthread thread_; // the last one: it uses the others
};

} // namespace zelvatone
