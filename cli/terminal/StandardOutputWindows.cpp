#include "cli/terminal/StandardOutput.h"

#include "host/Error.h"
#include "host/files/SystemFile.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <system_error>

namespace zelvatone {

namespace {

constexpr int kOutput = 1; // the C library's numbers
constexpr int kError = 2;

HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

} // namespace

StandardOutput::StandardOutput(bool pluginsToStandardError) : descriptor_(_dup(kOutput)) {
    // What is printed is UTF-8, with line ends as they are.
    _setmode(descriptor_, _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    const int elsewhere = pluginsToStandardError ? _dup(kError) : _open("NUL", _O_WRONLY);
    if (elsewhere >= 0) {
        _dup2(elsewhere, kOutput);
        _close(elsewhere);
        // For plug-ins that have a C library of their own.
        SetStdHandle(STD_OUTPUT_HANDLE, handleOf(kOutput));
    }
}

StandardOutput::~StandardOutput() {
    _close(descriptor_);
}

void StandardOutput::print(const std::string& text) const {
    std::size_t done = 0;
    while (done < text.size()) {
        const std::int64_t put = writeFile(descriptor_, text.data() + done,
                                           static_cast<std::int64_t>(text.size() - done));
        if (put < 0) {
            throw InputError("cannot write to standard output: " +
                             std::generic_category().message(errno));
        }
        done += static_cast<std::size_t>(put);
    }
}

} // namespace zelvatone
