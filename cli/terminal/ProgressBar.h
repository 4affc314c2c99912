// Shows how far a job is, on a terminal.
#pragma once

#include "cli/terminal/Terminal.h"

#include <chrono>
#include <string>

namespace zelvatone {

class ProgressBar {
public:
    // Draws on standard error, and only if that is a terminal and `wanted` holds: a bar, or lines
    // of text where the terminal cannot erase.
    explicit ProgressBar(bool wanted);
    // Wipes itself off; lines stay.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // `done` from 0 to 1; `note` follows the bar. Draws a few times a second at most, or a line for
    // each quarter.
    void show(double done, const std::string& note);

private:
    void draw(double done, const std::string& note);
    void printQuarter(double done, const std::string& note);

    TerminalKind kind_;
    bool isDrawn_ = false;
    int nextQuarter_ = 1;
    std::chrono::steady_clock::time_point nextDrawing_;
};

// The bar's line: "[#####.....]  50 %  note", `width` places between the brackets; "50 %  note"
// where there is no place.
std::string progressLine(double done, int width, const std::string& note);

// Places for a bar in a terminal of so many columns, so that its line does not wrap; 0 for none.
int progressWidth(int columns, const std::string& note);

} // namespace zelvatone
