#include "tests/kernel/PrintedLines.h"

#include <unistd.h>

PrintedLines::PrintedLines() : file_(std::tmpfile()), realOutput_(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    dup2(fileno(file_), STDOUT_FILENO);
}

PrintedLines::~PrintedLines() {
    std::fflush(stdout);
    dup2(realOutput_, STDOUT_FILENO);
    close(realOutput_);
    std::fclose(file_);
}

std::string PrintedLines::take() {
    std::fflush(stdout);
    // Both descriptors share one position: it is the number of bytes written.
    const off_t size = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (size > 0 && pread(STDOUT_FILENO, text.data(), text.size(), 0) != size) {
        text = "(could not be read)";
    }
    lseek(STDOUT_FILENO, 0, SEEK_SET);
    return text;
}
