#include "cli/terminal/ProgressBar.h"

#include "cli/terminal/Terminal.h"
#include "host/text/Format.h"

#include <algorithm>
#include <cstdio>

namespace zelvatone {

namespace {

constexpr auto kDrawingInterval = std::chrono::milliseconds(100); // smooth enough to watch
constexpr int kWidth = 40;
constexpr const char* kWipe = "\r\033[K"; // back to the left edge, erase to the right one

} // namespace

std::string progressLine(double done, int width, const std::string& note) {
    const double within = std::clamp(done, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(within * width);
    return formatText("[{:.<{}}] {:>3} %  {}", std::string(filled, '#'), width,
                      static_cast<int>(within * 100.0), note);
}

ProgressBar::ProgressBar(bool wanted) : isVisible_(wanted && isWatched()) {}

ProgressBar::~ProgressBar() {
    if (isDrawn_) {
        std::fputs(kWipe, stderr);
        std::fflush(stderr);
    }
}

void ProgressBar::show(double done, const std::string& note) {
    const auto now = std::chrono::steady_clock::now();
    if (!isVisible_ || now < nextDrawing_) {
        return;
    }
    nextDrawing_ = now + kDrawingInterval;
    isDrawn_ = true;
    std::fputs((kWipe + progressLine(done, kWidth, note)).c_str(), stderr);
    std::fflush(stderr);
}

} // namespace zelvatone
