#include "host/threads/Interrupt.h"

#include <windows.h>

#include <atomic>
#include <csignal>

namespace zelvatone {

namespace {

std::atomic<bool> isNoted = false;

// Called on a thread of Windows' own.
BOOL WINAPI noteEvent(DWORD event) {
    if (isNoted.exchange(true)) {
        return FALSE; // the second time: ends the process
    }
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        // The console is closed or the user leaves: the process ends when this returns, and after
        // five seconds anyway.
        constexpr DWORD kGrace = 4500; // milliseconds
        Sleep(kGrace);
    }
    return TRUE;
}

} // namespace

InterruptWatch::InterruptWatch() {
    isNoted = false;
    SetConsoleCtrlHandler(noteEvent, TRUE);
}

InterruptWatch::~InterruptWatch() {
    SetConsoleCtrlHandler(noteEvent, FALSE);
}

void InterruptWatch::check() {
    if (isNoted) {
        throw Interrupted{SIGINT};
    }
}

void endBySignal(int /*signal*/) {
    ExitProcess(STATUS_CONTROL_C_EXIT);
}

} // namespace zelvatone
