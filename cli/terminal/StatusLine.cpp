#include "cli/terminal/StatusLine.h"

#include "cli/terminal/Terminal.h"
#include "host/text/Format.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zelvatone {

namespace {

constexpr const char* kWipe = "\r\033[K"; // back to the left edge, erase to the right one
constexpr double kSoftest = -48.0;        // dBFS at the left end of the meter
constexpr int kMeterPlaces = 12;

void printText(const std::string& text) {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

std::string meter(double decibels) {
    const double share = std::clamp((decibels - kSoftest) / -kSoftest, 0.0, 1.0);
    const auto places = static_cast<std::size_t>(std::lround(share * kMeterPlaces));
    return formatText("[{:.<{}}]", std::string(places, '#'), kMeterPlaces);
}

std::string levelText(double decibels) {
    return decibels < kSoftest ? "  --- dB" : formatText("{:>5.1f} dB", decibels);
}

} // namespace

std::string playStatusText(const PlayStatus& status, int columns) {
    std::string text = formatText("{}{} | {} {} | {} {} | load {:.0f} % | {:.1f} ms | {} late",
                                  status.isRecording ? "REC " : "", status.program, status.notes,
                                  status.notes == 1 ? "note" : "notes", meter(status.peakDecibels),
                                  levelText(status.peakDecibels), status.load * 100.0,
                                  status.latencySeconds * 1000.0, status.lateBlocks);
    text.resize(std::min(text.size(), static_cast<std::size_t>(std::max(columns, 0))));
    return text;
}

StatusLine::~StatusLine() {
    if (!shown_.empty()) {
        printText(kWipe);
    }
}

void StatusLine::show(const PlayStatus& status) {
    if (!isWanted_) {
        return;
    }
    // A terminal wraps when its last column is written to.
    const std::string text = playStatusText(status, terminalColumns() - 1);
    if (text != shown_) {
        printText(kWipe + text);
        shown_ = text;
    }
}

void StatusLine::print(const std::string& lines) {
    printText((shown_.empty() ? "" : kWipe) + lines + "\n" + shown_);
}

} // namespace zelvatone
