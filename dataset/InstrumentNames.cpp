#include "dataset/InstrumentNames.h"

#include "formats/Instrument.h"
#include "formats/ParameterUnits.h"

namespace zelvatone {

const std::vector<std::string>& shownParameterNames() {
    static const std::vector<std::string> kNames = [] {
        std::vector<std::string> names;
        for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
            names.push_back(parameter.name);
        }
        return names;
    }();
    return kNames;
}

const std::vector<std::string>& factoryNames() {
    static const std::vector<std::string> kNames = [] {
        std::vector<std::string> names;
        for (const SynthProgram& program : factoryBank()) {
            names.push_back(program.name.text());
        }
        return names;
    }();
    return kNames;
}

} // namespace zelvatone
