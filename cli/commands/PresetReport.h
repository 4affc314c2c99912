// What a preset file holds and what a plug-in makes of it.
#pragma once

#include "cli/commands/ParameterList.h"
#include "cli/commands/SetupOptions.h"

#include <string>
#include <vector>

namespace zelvatone {

// "program 'Organ', 23 parameters" or "bank of 42 programs, 23 parameters each".
std::string presetSummary(const Preset& preset);

class PresetReport {
public:
    // `plugin` is what the file was loaded into. Of a bank, all programs are listed by name, or the
    // current one with its parameters when `oneProgram` holds.
    PresetReport(const PresetFile& file, bool oneProgram, HostedPlugin& plugin);

    std::string text() const;
    std::string json() const;

private:
    struct Loaded {
        int number; // in the bank
        std::string name;
        std::vector<float> stored; // in the file
        std::vector<ParameterRow> rows;
    };
    Loaded loaded(int number, HostedPlugin& plugin) const;
    static std::string programTable(const Loaded& program);
    std::string bankTable() const;
    static Json programJson(const Loaded& program);

    const PresetFile& file_;
    bool isList_;
    std::vector<Loaded> programs_; // those that are shown
};

} // namespace zelvatone
