// Preset files. What was read comes back the same from the writer.
#include "host/Error.h"
#include "host/preset/PresetBytes.h"
#include "host/preset/PresetReader.h"
#include "tests/fuzz/Fuzzer.h"

#include <algorithm>
#include <optional>
#include <span>

namespace zelvatone::test {
namespace {

std::optional<Preset> presetOf(std::span<const std::uint8_t> bytes) {
    try {
        return parsePreset(bytes);
    } catch (const InputError&) {
        return std::nullopt;
    }
}

bool isSame(const PresetProgram& a, const PresetProgram& b) {
    return a.name == b.name && a.values == b.values;
}

bool isSame(const Preset& a, const Preset& b) {
    return a.isBank == b.isBank && a.pluginId == b.pluginId && a.pluginVersion == b.pluginVersion &&
           a.currentProgram == b.currentProgram &&
           std::equal(a.programs.begin(), a.programs.end(), b.programs.begin(), b.programs.end(),
                      [](const auto& x, const auto& y) { return isSame(x, y); });
}

void check(const Preset& preset) {
    require(preset.isBank || preset.programs.size() == 1, "a program file holds one program");
    for (const PresetProgram& program : preset.programs) {
        for (const float value : program.values) {
            require(value >= 0.0F && value <= 1.0F, "values are from 0 to 1");
        }
    }
    const auto again = presetOf(presetBytes(preset));
    require(again && isSame(preset, *again), "a preset is the same after it was written");
}

} // namespace
} // namespace zelvatone::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto preset = zelvatone::test::presetOf({data, size})) {
        zelvatone::test::check(*preset);
    }
    return 0;
}
