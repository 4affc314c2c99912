// Help texts that fit a terminal.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace zelvatone {

// Breaks what stands beside an option or a command between words, so that no line is longer than
// the 80 columns that every terminal has.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_subcommand(const CLI::App* command) const override;
};

// `text` in lines of at most `width` characters, broken at spaces; a longer word stays whole.
// Without a line end.
std::string wrapped(const std::string& text, std::size_t width, const std::string& lineStart);

} // namespace zelvatone
