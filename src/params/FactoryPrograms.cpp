#include "params/FactoryPrograms.h"

#include "params/CheckedAccess.h"
#include "params/FactoryTable.h"
#include "params/ParameterTable.h"

#include <cstdint>

namespace zelvatone {

namespace {

// The linear rule for every kind. In double, unlike the host's mapping; setValue then floors the
// whole-number kinds and clamps all.
float unitsAt(const SynthParameter& parameter, double fraction) {
    const double min = parameter.min;
    const double max = parameter.max;
    return static_cast<float>(min + (max - min) * fraction);
}

void applyRow(const FactoryRow& row, SynthProgram& program) {
    program.name = row.name;
    for (std::int32_t index = 0; index < kParameterCount; ++index) {
        const double fraction = row.fractions[index];
        if (fraction != kUnset) {
            SynthParameter& parameter = *checkedAt(program.parameters, index);
            parameter.setValue(unitsAt(parameter, fraction));
        }
    }
}

} // namespace

void buildFactoryPrograms(ProgramBank& bank) {
    for (const FactoryRow& row : kFactoryTable) {
        bank.push_back(makeDefaultProgram());
        bank.back() = checkedAt(bank, 0);
        applyRow(row, bank.back());
    }
}

ProgramBank makeFactoryBank() {
    ProgramBank bank;
    bank.push_back(makeDefaultProgram());
    bank.front().name = "Default";
    buildFactoryPrograms(bank);
    return bank;
}

} // namespace zelvatone
