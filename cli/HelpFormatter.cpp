#include "cli/HelpFormatter.h"

#include <sstream>

namespace zelvatone {

namespace {

constexpr std::size_t kColumns = 80;
constexpr std::size_t kTextAt = 26; // column; right of most options, with room for sentences

std::string entry(const std::string& name, const std::string& text) {
    const std::string indent(kTextAt, ' ');
    std::string line = "  " + name;
    if (line.size() + 2 > kTextAt) {
        line += text.empty() ? "" : "\n" + indent;
    } else {
        line.resize(text.empty() ? line.size() : kTextAt, ' ');
    }
    return line + wrapped(text, kColumns - kTextAt, indent) + "\n";
}

} // namespace

std::string wrapped(const std::string& text, std::size_t width, const std::string& lineStart) {
    std::istringstream words(text);
    std::string lines;
    std::size_t used = 0;
    for (std::string word; words >> word;) {
        const bool fits = used + 1 + word.size() <= width;
        if (used != 0) {
            lines += fits ? " " : "\n" + lineStart;
        }
        used = used != 0 && fits ? used + 1 + word.size() : word.size();
        lines += word;
    }
    return lines;
}

std::string HelpFormatter::make_option(const CLI::Option* option, bool isPositional) const {
    return entry(make_option_name(option, isPositional) + make_option_opts(option),
                 make_option_desc(option));
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    return entry(command->get_name(), command->get_description());
}

} // namespace zelvatone
