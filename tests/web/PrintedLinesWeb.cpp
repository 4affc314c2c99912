// For a system without processes: standard output is a file from here on, in the only folder that
// the program may use.
#include "tests/kernel/PrintedLines.h"

#include <unistd.h>

PrintedLines::PrintedLines()
    : file_(std::freopen("/lines", "w+", stdout)), realOutput_(fileno(file_)) {}

PrintedLines::~PrintedLines() = default;

std::string PrintedLines::take() {
    std::fflush(file_);
    const long size = std::ftell(file_);
    std::string text(static_cast<std::size_t>(size), '\0');
    std::rewind(file_);
    if (std::fread(text.data(), 1, text.size(), file_) != text.size()) {
        text = "(could not be read)";
    }
    std::rewind(file_);
    if (ftruncate(realOutput_, 0) != 0) {
        text = "(could not be emptied)";
    }
    // Which sign a NaN has is up to the machine.
    for (std::size_t at = text.find("-nan"); at != std::string::npos; at = text.find("-nan", at)) {
        text.erase(at, 1);
    }
    return text;
}
