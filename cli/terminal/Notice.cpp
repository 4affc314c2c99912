#include "cli/terminal/Notice.h"

#include "host/plugin/PluginText.h"
#include "host/text/Format.h"

#include <iostream>

namespace zelvatone {

void printNotice(const std::string& line) {
    std::cerr << formatText("zelvatone: {}\n", cleanText(line));
}

} // namespace zelvatone
