#include "cli/terminal/ProgressBar.h"

#include "host/text/Format.h"

#include <algorithm>
#include <cstdio>

namespace zelvatone {

namespace {

constexpr auto kDrawingInterval = std::chrono::milliseconds(100); // smooth enough to watch
constexpr int kWidest = 40;
constexpr int kNarrowest = 4; // shorter tells no more than the percent beside it
constexpr int kQuarters = 4;
constexpr const char* kWipe = "\r\033[K"; // back to the left edge, erase to the right one

void print(const std::string& text) {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

} // namespace

std::string progressLine(double done, int width, const std::string& note) {
    const double within = std::clamp(done, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(within * width);
    const std::string bar =
        width > 0 ? formatText("[{:.<{}}] ", std::string(filled, '#'), width) : "";
    return formatText("{}{:>3} %  {}", bar, static_cast<int>(within * 100.0), note);
}

int progressWidth(int columns, const std::string& note) {
    // A terminal wraps when its last column is written to.
    const int places = columns - 1 - static_cast<int>(progressLine(1.0, 0, note).size()) -
                       static_cast<int>(std::string_view("[] ").size());
    return places < kNarrowest ? 0 : std::min(places, kWidest);
}

ProgressBar::ProgressBar(bool wanted) : kind_(wanted ? terminalKind() : TerminalKind::kNone) {}

ProgressBar::~ProgressBar() {
    if (isDrawn_) {
        print(kWipe);
    }
}

void ProgressBar::draw(double done, const std::string& note) {
    const auto now = std::chrono::steady_clock::now();
    if (now < nextDrawing_) {
        return;
    }
    nextDrawing_ = now + kDrawingInterval;
    isDrawn_ = true;
    const int columns = terminalColumns(); // a window may change its size
    const std::string line = progressLine(done, progressWidth(columns, note), note);
    print(kWipe + line.substr(0, static_cast<std::size_t>(std::max(columns - 1, 0))));
}

void ProgressBar::printQuarter(double done, const std::string& note) {
    if (done * kQuarters >= nextQuarter_ && nextQuarter_ < kQuarters) {
        nextQuarter_ = static_cast<int>(done * kQuarters) + 1;
        print(progressLine(done, 0, note) + "\n");
    }
}

void ProgressBar::show(double done, const std::string& note) {
    if (kind_ == TerminalKind::kErasing) {
        draw(done, note);
    } else if (kind_ == TerminalKind::kPlain) {
        printQuarter(done, note);
    }
}

} // namespace zelvatone
