// The host's standard output, kept clean of what plug-ins print.
#pragma once

#include <string>

namespace zelvatone {

// Plug-ins print diagnostics to standard output. From construction on, those go to standard error
// or nowhere, and print() alone reaches the real standard output. One per process, before any
// plug-in is loaded.
class StandardOutput {
public:
    explicit StandardOutput(bool pluginsToStandardError);
    ~StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    // Throws InputError when the text cannot be written.
    void print(const std::string& text) const;

private:
    int descriptor_;
};

} // namespace zelvatone
