#include "host/plugin/Programs.h"

#include "host/Error.h"
#include "host/text/Names.h"
#include "host/text/Numbers.h"

#include <algorithm>
#include <functional>

namespace zelvatone {

namespace {

constexpr std::size_t kNearestNamed = 3; // more would not fit a line, fewer hide the right one

std::vector<int> numbersOf(const std::vector<std::string>& names,
                           const std::function<bool(const std::string&)>& fits) {
    std::vector<int> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (fits(names[i])) {
            found.push_back(static_cast<int>(i));
        }
    }
    return found;
}

// "'A', 'B' or 'C'"
std::string alternatives(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += i == 0 ? "" : i + 1 < words.size() ? ", " : " or ";
        text += words[i];
    }
    return text;
}

std::string severalError(const std::vector<std::string>& names, std::string_view wanted,
                         const std::vector<int>& found) {
    std::vector<std::string> candidates;
    candidates.reserve(found.size());
    for (const int number : found) {
        std::string& candidate = candidates.emplace_back("'");
        candidate += names[static_cast<std::size_t>(number)];
        candidate += "' (" + std::to_string(number) + ")";
    }
    return "program '" + std::string(wanted) + "' could be " + alternatives(candidates);
}

std::string noneError(const std::vector<std::string>& names, std::string_view wanted) {
    if (names.empty()) {
        return "there is no program '" + std::string(wanted) + "': the plug-in has none";
    }
    if (wholeNumber(wanted)) {
        return "there is no program " + std::string(wanted) + "; they are 0 to " +
               std::to_string(static_cast<int>(names.size()) - 1);
    }
    const std::string line = "unknown program '" + std::string(wanted) + "'; ";
    std::vector<std::string> nearest = nearestNames(names, wanted, kNearestNamed);
    for (std::string& name : nearest) {
        name.insert(0, "'").append("'");
    }
    return line + (nearest.empty() ? "'zelvatone programs' lists those that there are"
                                   : "did you mean " + alternatives(nearest) + "?");
}

// The number that `wanted` spells; -1 when there is no such program.
int numberIn(const std::vector<std::string>& names, std::string_view wanted) {
    const int number = wholeNumber(wanted).value_or(-1);
    return number < static_cast<int>(names.size()) ? std::max(number, -1) : -1;
}

// The only one of `found`; -1 for none.
int only(const std::vector<std::string>& names, std::string_view wanted,
         const std::vector<int>& found) {
    if (found.size() > 1) {
        throw InputError(severalError(names, wanted, found));
    }
    return found.empty() ? -1 : found[0];
}

} // namespace

std::vector<std::string> programNames(HostedPlugin& plugin) {
    const int before = currentProgram(plugin);
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(plugin.programCount()));
    for (int i = 0; i < plugin.programCount(); ++i) {
        std::string name = plugin.text(effGetProgramNameIndexed, i, -1); // in no category
        if (name.empty()) { // many plug-ins tell the name of the current program only
            selectProgram(plugin, i);
            name = plugin.text(effGetProgramName);
        }
        names.push_back(name);
    }
    if (currentProgram(plugin) != before) {
        selectProgram(plugin, before);
    }
    return names;
}

int currentProgram(HostedPlugin& plugin) {
    return static_cast<int>(plugin.request(effGetProgram));
}

void selectProgram(HostedPlugin& plugin, int number) {
    plugin.request(effBeginSetProgram);
    plugin.request(effSetProgram, 0, number);
    plugin.request(effEndSetProgram);
}

int findProgram(const std::vector<std::string>& names, std::string_view wanted) {
    const auto isExact = [&](const std::string& name) { return name == wanted; };
    const auto isEqual = [&](const std::string& name) { return equalInAnyCase(name, wanted); };
    const auto begins = [&](const std::string& name) {
        return !wanted.empty() && equalInAnyCase(name.substr(0, wanted.size()), wanted);
    };
    int found = only(names, wanted, numbersOf(names, isExact));
    if (found < 0) {
        found = only(names, wanted, numbersOf(names, isEqual));
    }
    if (found < 0) {
        found = numberIn(names, wanted);
    }
    if (found < 0) {
        found = only(names, wanted, numbersOf(names, begins));
    }
    if (found < 0) {
        throw InputError(noneError(names, wanted));
    }
    return found;
}

} // namespace zelvatone
