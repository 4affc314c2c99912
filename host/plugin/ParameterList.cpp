#include "host/plugin/ParameterList.h"

#include "host/text/Numbers.h"
#include "host/text/Table.h"

namespace zelvatone {

std::vector<ParameterRow> readParameters(HostedPlugin& plugin) {
    std::vector<ParameterRow> rows;
    rows.reserve(static_cast<std::size_t>(plugin.parameterCount()));
    for (int i = 0; i < plugin.parameterCount(); ++i) {
        rows.push_back({i, plugin.text(effGetParamName, i), plugin.text(effGetParamLabel, i),
                        plugin.parameter(i), plugin.text(effGetParamDisplay, i)});
    }
    return rows;
}

std::string parameterTable(const std::vector<ParameterRow>& rows) {
    std::vector<std::vector<std::string>> lines{{"Index", "Name", "Label", "Value", "Display"}};
    for (const ParameterRow& row : rows) {
        lines.push_back({std::to_string(row.index), row.name, row.label,
                         fixedPoint(static_cast<double>(row.value), 4), row.display});
    }
    return tableText(lines, {true, false, false, true, false});
}

Json parameterJson(const std::vector<ParameterRow>& rows) {
    Json list = Json::array();
    for (const ParameterRow& row : rows) {
        list.push_back({{"index", row.index},
                        {"name", row.name},
                        {"label", row.label},
                        {"value", shortestDouble(row.value)},
                        {"display", row.display}});
    }
    return list;
}

} // namespace zelvatone
