#include "tests/windows/EditorFixture.h"

#include <cstdio>

namespace zelvatone::test {

std::vector<std::string> WindowsEditor::edits() const {
    std::vector<std::string> edits;
    for (const HostCall& call : host.calls) {
        const std::string parameter = std::to_string(call.index);
        if (call.opcode == audioMasterBeginEdit) {
            edits.push_back("begin " + parameter);
        } else if (call.opcode == audioMasterEndEdit) {
            edits.push_back("end " + parameter);
        } else if (call.opcode == audioMasterAutomate) {
            char value[16];
            std::snprintf(value, sizeof value, "%.4f", static_cast<double>(call.opt));
            edits.push_back(parameter + " = " + value);
        }
    }
    return edits;
}

} // namespace zelvatone::test
