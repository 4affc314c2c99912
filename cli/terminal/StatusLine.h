// The line at the bottom of a terminal while an instrument is played.
#pragma once

#include <string>

namespace zelvatone {

struct PlayStatus {
    std::string program;
    int notes = 0;
    double peakDecibels = 0.0; // -infinity for silence
    double load = 0.0;         // 1: all the time that there is
    double latencySeconds = 0.0;
    long lateBlocks = 0;
    bool isRecording = false;
};

// In one line of up to `columns` characters, those at the end cut off.
std::string playStatusText(const PlayStatus& status, int columns);

// Draws on standard error when `wanted` holds. One at a time.
class StatusLine {
public:
    explicit StatusLine(bool wanted) : isWanted_(wanted) {}
    ~StatusLine();
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    void show(const PlayStatus& status);
    // Puts lines above the status.
    void print(const std::string& lines);

private:
    bool isWanted_;
    std::string shown_;
};

} // namespace zelvatone
