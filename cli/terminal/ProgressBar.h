// Shows how far a job is, on a terminal.
#pragma once

#include <chrono>
#include <string>

namespace zelvatone {

class ProgressBar {
public:
    // Draws on standard error, and only if that is a terminal and `wanted` holds.
    explicit ProgressBar(bool wanted);
    // Wipes itself off.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // `done` from 0 to 1; `note` follows the bar. Draws a few times a second at most.
    void show(double done, const std::string& note);

private:
    bool isVisible_;
    bool isDrawn_ = false;
    std::chrono::steady_clock::time_point nextDrawing_;
};

// The bar's line: "[#####.....]  50 %  note", `width` places between the brackets.
std::string progressLine(double done, int width, const std::string& note);

} // namespace zelvatone
