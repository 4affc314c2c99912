#include "formats/ParameterUnits.h"

#include "formats/NumberText.h"
#include "params/CheckedAccess.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace zelvatone {

namespace {

// Locale-free, as texts in sessions have to be.
char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool isSameText(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

// "1/4 beats" without "beats"; the text itself if it does not end in the unit.
std::string_view withoutUnit(std::string_view text, std::string_view unit) {
    if (!unit.empty() && text.size() >= unit.size() &&
        isSameText(text.substr(text.size() - unit.size()), unit)) {
        text.remove_suffix(unit.size());
    }
    return trimmed(text);
}

std::string symbolOf(std::string name) {
    for (char& c : name) {
        c = isBlank(c) ? '_' : lowered(c);
    }
    return name;
}

// The parameter objects themselves, whose kinds hold the rules of values and texts.
const SynthProgram& defaultProgram() {
    static const SynthProgram kProgram = makeDefaultProgram();
    return kProgram;
}

const SynthParameter& objectOf(ParameterIndex index) {
    return *checkedAt(defaultProgram().parameters, index);
}

struct ParameterDestroy {
    void operator()(SynthParameter* parameter) const { SynthParameter::destroy(parameter); }
};

std::unique_ptr<SynthParameter, ParameterDestroy> objectAt(ParameterIndex index, float value) {
    std::unique_ptr<SynthParameter, ParameterDestroy> object(objectOf(index).clone());
    object->setValue(value);
    return object;
}

std::string textAt(ParameterIndex index, float value) {
    return std::string(trimmed(objectAt(index, value)->getDisplay()));
}

std::vector<ParameterChoice> choicesOf(const SynthParameter& object, ParameterIndex index) {
    if (dynamic_cast<const WaveSynthParameter*>(&object) == nullptr &&
        dynamic_cast<const BeatsSynthParameter*>(&object) == nullptr) {
        return {};
    }
    std::vector<ParameterChoice> choices;
    const auto last = static_cast<std::int32_t>(object.max);
    for (auto value = static_cast<std::int32_t>(object.min); value <= last; ++value) {
        const auto units = static_cast<float>(value);
        choices.push_back({.value = units, .text = textAt(index, units)});
    }
    return choices;
}

ParameterUnits unitsOf(ParameterIndex index) {
    const SynthParameter& object = objectOf(index);
    return {.index = index,
            .name = object.name,
            .symbol = symbolOf(object.name),
            .unit = object.label,
            .min = object.min,
            .max = object.max,
            .defaultValue = object.defaultValue,
            .isWhole = dynamic_cast<const IntegerSynthParameter*>(&object) != nullptr,
            .choices = choicesOf(object, index)};
}

std::vector<ParameterUnits> makeAllUnits() {
    std::vector<ParameterUnits> all;
    all.reserve(kParameterCount);
    for (std::int32_t index = 0; index < kParameterCount; ++index) {
        all.push_back(unitsOf(static_cast<ParameterIndex>(index)));
    }
    return all;
}

bool isPercent(ParameterIndex index) {
    return dynamic_cast<const PercentSynthParameter*>(&objectOf(index)) != nullptr;
}

std::optional<double> numberIn(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    const std::optional<double> number = doubleIn(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

} // namespace

std::span<const ParameterUnits> parameterUnits() {
    static const std::vector<ParameterUnits> kAll = makeAllUnits();
    return kAll;
}

float nearestValue(const ParameterUnits& parameter, double units) {
    if (std::isnan(units)) {
        return parameter.defaultValue;
    }
    // The sum makes a plain zero of a negative one.
    const double whole = parameter.isWhole ? std::round(units) + 0.0 : units;
    return static_cast<float>(
        std::clamp(whole, static_cast<double>(parameter.min), static_cast<double>(parameter.max)));
}

std::string textOfValue(const ParameterUnits& parameter, float value) {
    return textAt(parameter.index, nearestValue(parameter, static_cast<double>(value)));
}

std::optional<float> valueOfText(const ParameterUnits& parameter, std::string_view text) {
    const std::string_view bare = withoutUnit(trimmed(text), parameter.unit);
    for (const ParameterChoice& choice : parameter.choices) {
        if (isSameText(bare, withoutUnit(choice.text, parameter.unit))) {
            return choice.value;
        }
    }
    const std::optional<double> number = numberIn(bare);
    if (!number || !parameter.choices.empty()) {
        return std::nullopt;
    }
    return nearestValue(parameter, isPercent(parameter.index) ? *number / 100.0 : *number);
}

std::optional<float> valueOfExactText(const ParameterUnits& parameter, std::string_view text) {
    const std::optional<float> value = floatIn(text);
    // A value that the parameter can hold stays what it is, one that is not a number does not.
    if (!value || nearestValue(parameter, static_cast<double>(*value)) != *value) {
        return std::nullopt;
    }
    return value;
}

} // namespace zelvatone
