#include "web/engine/EditedProgram.h"

#include "formats/Instrument.h"
#include "formats/NumberText.h"
#include "host/preset/PresetBytes.h"
#include "host/preset/ReportedValue.h"
#include "params/CheckedAccess.h"
#include "web/engine/LinkText.h"
#include "web/engine/ProgramFile.h"

#include <cmath>
#include <optional>

namespace zelvatone {

namespace {

constexpr std::string_view kLinkVersion = "1";

std::int32_t programCount() {
    return static_cast<std::int32_t>(factoryBank().size());
}

// As the plug-in tells its host.
float reportedValue(const SynthParameter& parameter) {
    return parameter.toNormalised(parameter.min, parameter.max, parameter.value);
}

// Hosts show names of so many bytes.
std::string_view cutName(std::string_view name) {
    return name.substr(0, kVstMaxProgNameLen);
}

std::optional<std::int32_t> programIn(std::string_view text) {
    const std::optional<float> number = floatIn(text);
    if (!number || !(*number >= 0.0F) || !(*number < static_cast<float>(programCount())) ||
        std::floor(*number) != *number) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*number);
}

std::optional<float> tempoIn(std::string_view text) {
    const std::optional<float> tempo = floatIn(text);
    return tempo && *tempo > 0.0F && std::isfinite(*tempo) ? tempo : std::nullopt;
}

} // namespace

std::string displayAt(ParameterIndex index, float normalised) {
    const SynthParameter& parameter = *checkedAt(checkedAt(factoryBank(), 0).parameters, index);
    return textOfValue(parameterUnits()[index],
                       parameter.toUnits(parameter.min, parameter.max, normalised));
}

float settingOf(const SynthParameter& parameter) {
    // Both mappings round, so that the way back may lead past the value by a few floats.
    constexpr int kMostSteps = 8;
    const float reported = reportedValue(parameter);
    float above = reported;
    float below = reported;
    for (int i = 0; i <= kMostSteps; ++i) {
        for (const float setting : {above, below}) {
            if (parameter.toUnits(parameter.min, parameter.max, setting) == parameter.value) {
                return setting;
            }
        }
        above = std::nextafter(above, 2.0F);
        below = std::nextafter(below, -1.0F);
    }
    return reported;
}

EditedProgram::EditedProgram() : program_(checkedAt(factoryBank(), 0)) {}

SynthParameter& EditedProgram::parameter(ParameterIndex index) const {
    return *checkedAt(program_.parameters, index);
}

void EditedProgram::load(std::int32_t program) {
    program_ = checkedAt(factoryBank(), program);
    number_ = program;
}

void EditedProgram::set(ParameterIndex index, float normalised) {
    SynthParameter& changed = parameter(index);
    changed.setValue(changed.toUnits(changed.min, changed.max, normalised));
}

std::vector<std::uint8_t> EditedProgram::file() const {
    PresetProgram saved{.name = std::string(cutName(name())), .values = {}};
    for (const ParameterUnits& units : parameterUnits()) {
        saved.values.push_back(reportedValue(parameter(units.index)));
    }
    return presetBytes(
        {.pluginId = kPluginId, .pluginVersion = kPluginVersion, .programs = {saved}});
}

std::string EditedProgram::takeFile(std::span<const std::uint8_t> bytes) {
    const ProgramFile file = readProgramFile(bytes);
    if (!file.error.empty()) {
        return file.error;
    }
    program_.name = cutName(file.program.name);
    for (const ParameterUnits& units : parameterUnits()) {
        setAsReported(checkedAt(file.program.values, units.index), [&](float number) {
            set(units.index, number);
            return reportedValue(parameter(units.index));
        });
    }
    return {};
}

std::string EditedProgram::link(float tempo) const {
    LinkWriter writer;
    writer.add(kLinkVersion);
    writer.add(std::to_string(number_));
    writer.add(exactText(tempo));
    for (const ParameterUnits& shown : parameterUnits()) {
        writer.add(exactText(units(shown.index)));
    }
    writer.add(name());
    return writer.text();
}

bool EditedProgram::takeLink(std::string_view text, float& tempo) {
    LinkReader reader(text);
    const bool isKnown = reader.next() == kLinkVersion;
    const std::optional<std::int32_t> number = programIn(reader.next());
    const std::optional<float> newTempo = tempoIn(reader.next());
    if (!isKnown || !number || !newTempo) {
        return false;
    }
    SynthProgram taken = checkedAt(factoryBank(), *number);
    for (const ParameterUnits& units : parameterUnits()) {
        const std::optional<float> value = valueOfExactText(units, reader.next());
        if (!value) {
            return false;
        }
        checkedAt(taken.parameters, units.index)->setValue(*value);
    }
    taken.name = reader.next();
    if (!reader.isWhole() || taken.name == "") {
        return false;
    }
    program_ = taken;
    number_ = *number;
    tempo = *newTempo;
    return true;
}

} // namespace zelvatone
