#include "cli/commands/ParameterList.h"

#include "host/text/Format.h"
#include "host/text/Numbers.h"
#include "host/text/Table.h"

namespace zelvatone {

std::string parameterTable(const std::vector<ParameterRow>& rows) {
    std::vector<std::vector<std::string>> lines{{"Index", "Name", "Label", "Value", "Display"}};
    for (const ParameterRow& row : rows) {
        lines.push_back({std::to_string(row.index), row.name, row.label,
                         formatText("{:.4f}", row.value), row.display});
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
