// Writes a recording while it is played: the sound, and what plays it again.
#pragma once

#include "host/audio/SoundFileWriter.h"
#include "host/files/OutputFile.h"
#include "live/take/TakeClock.h"
#include "live/take/TakeRings.h"

#include <atomic>
#include <exception>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace zelvatone {

class TakeWriter {
public:
    struct Plan {
        std::filesystem::path sound; // ends in .wav; the others stand beside it
        int rate = 44100;            // Hz
        int channels = 2;
        std::vector<std::string> parameterNames;
        std::string command;  // that makes the sound again
        std::string programs; // what program changes choose, as a rendering reads it; or empty
        // What a recording leaves free on the disk: it ends while all its files can be completed.
        std::uintmax_t reservedBytes = std::uintmax_t{64} << 20U;
    };

    // Starts a thread that empties `rings`. What is named must outlive the writer. Throws
    // InputError when a file cannot be written.
    TakeWriter(const Plan& plan, TakeRings& rings, const TakeClock& clock);
    // Leaves no file unless finish() was called.
    ~TakeWriter();
    TakeWriter(const TakeWriter&) = delete;
    TakeWriter& operator=(const TakeWriter&) = delete;

    // Whether it goes on; it ends early when the disk is almost full or too slow, and when a WAV
    // file holds no more.
    bool isGoingOn() const { return !hasFailed_ && !hasEnded_ && !rings_.isFull(); }
    // Writes the rest, when nothing more comes into the rings, and gives all files their names, or
    // none. Throws InputError when a file cannot be completed.
    void finish();
    // Why a recording ended early, a line; empty for one that did not. After finish().
    std::string warning() const;
    double seconds() const;

private:
    void run(const std::stop_token& stop);
    bool drain();
    void endWhereNoMoreFits();
    std::filesystem::path beside(const char* extension) const;

    Plan plan_;
    TakeRings& rings_;
    const TakeClock& clock_;
    SoundFileWriter sound_;
    OutputFile messages_;
    OutputFile moves_;
    std::optional<OutputFile> programs_;
    std::vector<TakeEvent> events_;
    std::vector<float> samples_; // on their way
    std::int64_t frames_ = 0;
    std::string failure_; // of a write
    std::string ending_;  // why it has ended early
    std::atomic<bool> hasFailed_{false};
    std::atomic<bool> hasEnded_{false};
    std::jthread thread_; // the last one: it uses the others
};

} // namespace zelvatone
