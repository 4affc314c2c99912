#include "host/threads/Interrupt.h"

#include <array>
#include <csignal>
#include <cstdlib>

namespace zelvatone {

namespace {

constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t noted = 0;
std::array<struct sigaction, kSignals.size()> earlier{};

extern "C" void noteSignal(int signal) {
    noted = signal;
}

} // namespace

InterruptWatch::InterruptWatch() {
    noted = 0;
    struct sigaction action {};
    action.sa_handler = noteSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &earlier[i]);
        // A signal that the process inherits as ignored, as from `nohup`, stays ignored.
        if (earlier[i].sa_handler != SIG_IGN) {
            sigaction(kSignals[i], &action, nullptr);
        }
    }
}

InterruptWatch::~InterruptWatch() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], &earlier[i], nullptr);
    }
}

void InterruptWatch::check() {
    if (noted != 0) {
        throw Interrupted{noted};
    }
}

void endBySignal(int signal) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    std::_Exit(1); // not reached: the default action of these signals ends the process
}

} // namespace zelvatone
