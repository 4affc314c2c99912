// What the code under test prints.
#pragma once

#include <cstdio>
#include <string>

// Sends standard output to a file of its own while it lives.
class PrintedLines {
public:
    PrintedLines();
    ~PrintedLines();
    PrintedLines(const PrintedLines&) = delete;
    PrintedLines& operator=(const PrintedLines&) = delete;

    // Everything printed since the beginning or the last call.
    std::string take();

private:
    std::FILE* file_;
    int realOutput_;
};
