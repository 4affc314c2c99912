#include "host/plugin/ParameterLookup.h"

#include "host/Error.h"
#include "host/text/Names.h"
#include "host/text/Numbers.h"

#include <optional>

namespace zelvatone {

namespace {

std::vector<int> indicesOf(const std::vector<std::string>& names, std::string_view wanted) {
    std::vector<int> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (equalInAnyCase(names[i], wanted)) {
            found.push_back(static_cast<int>(i));
        }
    }
    return found;
}

std::string severalError(std::string_view wanted, const std::vector<int>& found) {
    std::string line = "several parameters are called '" + std::string(wanted) + "':";
    for (const int index : found) {
        line += ' ' + std::to_string(index);
    }
    return line + "; give the number";
}

std::string unknownError(const std::vector<std::string>& names, std::string_view wanted) {
    const auto nearest = nearestName(names, wanted);
    return "unknown parameter '" + std::string(wanted) + "'" +
           (nearest.empty() ? "" : "; did you mean '" + nearest + "'?");
}

} // namespace

std::vector<std::string> parameterNames(HostedPlugin& plugin) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(plugin.parameterCount()));
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        names.push_back(plugin.text(effGetParamName, i));
    }
    return names;
}

int findParameter(const std::vector<std::string>& names, std::string_view wanted) {
    auto found = indicesOf(names, wanted);
    if (found.empty() && wanted.size() > kVstMaxParamStrLen) {
        found = indicesOf(names, cleanEnd(wanted.substr(0, kVstMaxParamStrLen)));
    }
    if (found.size() > 1) {
        throw InputError(severalError(wanted, found));
    }
    if (found.size() == 1) {
        return found[0];
    }
    const std::optional<int> index = wholeNumber(wanted);
    if (!index) {
        throw InputError(unknownError(names, wanted));
    }
    if (*index < 0 || *index >= static_cast<int>(names.size())) {
        throw InputError("there is no parameter " + std::string(wanted) + "; they are 0 to " +
                         std::to_string(static_cast<int>(names.size()) - 1));
    }
    return *index;
}

} // namespace zelvatone
