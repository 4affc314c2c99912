#include "host/plugin/Programs.h"

#include "host/text/NameLookup.h"

namespace zelvatone {

namespace {

constexpr NameKind kPrograms{"program", "zelvatone programs"};

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
    return NameLookup(kPrograms, names).find(wanted);
}

} // namespace zelvatone
