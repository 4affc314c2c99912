#include "host/plugin/ParameterRows.h"

#include "host/plugin/FullNames.h"

namespace zelvatone {

std::vector<ParameterRow> readParameters(HostedPlugin& plugin) {
    std::vector<ParameterRow> rows;
    rows.reserve(static_cast<std::size_t>(plugin.parameterCount()));
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        rows.push_back({i, parameterName(plugin, i), plugin.text(effGetParamLabel, i),
                        plugin.parameter(i), plugin.text(effGetParamDisplay, i)});
    }
    return rows;
}

} // namespace zelvatone
