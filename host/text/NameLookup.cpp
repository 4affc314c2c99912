#include "host/text/NameLookup.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/text/Numbers.h"

namespace zelvatone {

namespace {

constexpr int kNone = -1;
constexpr std::size_t kNearestNamed = 3; // more would not fit a line, fewer hide the right one

} // namespace

int NameLookup::find(std::string_view wanted) const {
    const auto isExact = [&](std::string_view name) { return name == wanted; };
    const auto isEqual = [&](std::string_view name) { return equalInAnyCase(name, wanted); };
    const auto isCut = [&](std::string_view name) {
        return kind_.cutLength != 0 && wanted.size() > kind_.cutLength &&
               equalInAnyCase(name, cleanEnd(wanted.substr(0, kind_.cutLength)));
    };
    const auto begins = [&](std::string_view name) {
        return !wanted.empty() && equalInAnyCase(name.substr(0, wanted.size()), wanted);
    };
    int found = only(wanted, isExact);
    if (found == kNone) {
        found = only(wanted, isEqual);
    }
    if (found == kNone) {
        found = only(wanted, isCut);
    }
    if (found == kNone) {
        found = numberIn(wanted);
    }
    if (found == kNone) {
        found = only(wanted, begins);
    }
    if (found == kNone) {
        throw InputError(noneError(wanted));
    }
    return found;
}

// The number of the only name that fits; kNone for none. Throws InputError for several.
template<typename Fits>
int NameLookup::only(std::string_view wanted, Fits fits) const {
    std::vector<int> found;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (fits(names_[i])) {
            found.push_back(static_cast<int>(i));
        }
    }
    if (found.size() > 1) {
        throw InputError(severalError(wanted, found));
    }
    return found.empty() ? kNone : found[0];
}

// The number that `wanted` spells; kNone when no name has it.
int NameLookup::numberIn(std::string_view wanted) const {
    const int number = wholeNumber(wanted).value_or(kNone);
    return number >= 0 && number < static_cast<int>(names_.size()) ? number : kNone;
}

std::string NameLookup::severalError(std::string_view wanted, const std::vector<int>& found) const {
    std::vector<std::string> candidates;
    candidates.reserve(found.size());
    for (const int number : found) {
        candidates.push_back(
            formatText("'{}' ({})", names_[static_cast<std::size_t>(number)], number));
    }
    return formatText("{} '{}' could be {}", kind_.word, wanted, wordList(candidates, "or"));
}

std::string NameLookup::noneError(std::string_view wanted) const {
    if (names_.empty()) {
        return formatText("unknown {} '{}': the plug-in has none", kind_.word, wanted);
    }
    if (wholeNumber(wanted)) {
        return formatText("unknown {} {}; the numbers are 0 to {}", kind_.word, wanted,
                          names_.size() - 1);
    }
    std::vector<std::string> nearest = nearestNames(names_, wanted, kNearestNamed);
    if (nearest.empty()) {
        return formatText("unknown {} '{}'; '{}' lists them", kind_.word, wanted, kind_.command);
    }
    for (std::string& name : nearest) {
        name.insert(0, "'").append("'");
    }
    return formatText("unknown {} '{}'; did you mean {}?", kind_.word, wanted,
                      wordList(nearest, "or"));
}

} // namespace zelvatone
