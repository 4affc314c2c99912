#include "host/plugin/ParameterLookup.h"

#include "host/plugin/FullNames.h"
#include "host/text/NameLookup.h"

namespace zelvatone {

namespace {

constexpr NameKind kParameters{"parameter", "zelvatone params", kVstMaxParamStrLen};

} // namespace

std::vector<std::string> parameterNames(HostedPlugin& plugin) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(plugin.parameterCount()));
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        names.push_back(parameterName(plugin, i));
    }
    return names;
}

int findParameter(const std::vector<std::string>& names, std::string_view wanted) {
    return NameLookup(kParameters, names).find(wanted);
}

} // namespace zelvatone
