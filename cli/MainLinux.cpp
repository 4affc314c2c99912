#include "cli/Main.h"

#include <csignal>

int main(int argc, char** argv) {
    // A file that grows past the user's limit then fails to be written instead of ending us.
    std::signal(SIGXFSZ, SIG_IGN);
    return zelvatone::runProgram(argc, argv);
}
