// A recording of live play: its files, and the command that makes its samples again.
#pragma once

#include "cli/commands/PlayCommand.h"
#include "host/plugin/HostedPlugin.h"
#include "live/AudioBackend.h"
#include "live/take/TakeClock.h"
#include "live/take/TakeRings.h"
#include "live/take/TakeWriter.h"

#include <filesystem>
#include <optional>
#include <string>

namespace zelvatone {

// The sound's file that the options ask for, or none. Throws UsageError for a name that no
// recording has, InputError where it would take the place of what is read.
std::optional<std::filesystem::path> recordingPath(const PlayOptions& options);

class PlayRecording {
public:
    // Begins to write to `sound`, a recordingPath(), and beside it. `plugin` is set up; `clock`
    // must outlive the recording. Throws InputError when a file cannot be written.
    PlayRecording(const PlayOptions& options, std::filesystem::path sound,
                  const AudioFormat& format, HostedPlugin& plugin, const TakeClock& clock);

    // What the audio thread hands over.
    TakeRings& rings() { return rings_; }
    const TakeWriter& writer() const { return writer_; }
    // When nothing more is handed over: gives the files their names and says how to render them
    // again. Throws InputError when a file cannot be completed; then there is none.
    void finish(const StandardOutput& output);

private:
    std::filesystem::path sound_;
    std::string again_; // the command that makes the sound again
    TakeRings rings_;
    TakeWriter writer_;
};

} // namespace zelvatone
