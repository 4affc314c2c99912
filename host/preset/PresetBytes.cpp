#include "host/preset/PresetBytes.h"

#include "host/preset/PresetFormat.h"

#include <bit>

namespace zelvatone {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kProgramVersion = 1;
constexpr std::uint32_t kBankVersion = 2; // the one that keeps the current program

void append(Bytes& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
    }
}

void appendHead(Bytes& bytes, std::size_t size, std::uint32_t kind, std::uint32_t version,
                const Preset& preset, std::size_t count) {
    append(bytes, kPresetMark);
    append(bytes, static_cast<std::uint32_t>(size - kMarkAndSize));
    append(bytes, kind);
    append(bytes, version);
    append(bytes, static_cast<std::uint32_t>(preset.pluginId));
    append(bytes, static_cast<std::uint32_t>(preset.pluginVersion));
    append(bytes, static_cast<std::uint32_t>(count));
}

std::size_t sizeOf(const PresetProgram& program) {
    return kProgramHeader + 4 * program.values.size();
}

void appendProgram(Bytes& bytes, const Preset& preset, const PresetProgram& program) {
    appendHead(bytes, sizeOf(program), kProgramKind, kProgramVersion, preset,
               program.values.size());
    std::string name = program.name.substr(0, kPresetNameLength - 1);
    name.resize(kPresetNameLength, '\0');
    bytes.insert(bytes.end(), name.begin(), name.end());
    for (const float value : program.values) {
        append(bytes, std::bit_cast<std::uint32_t>(value));
    }
}

} // namespace

Bytes presetBytes(const Preset& preset) {
    Bytes bytes;
    if (!preset.isBank) {
        appendProgram(bytes, preset, preset.programs.at(0));
        return bytes;
    }
    std::size_t size = kBankHeader;
    for (const PresetProgram& program : preset.programs) {
        size += sizeOf(program);
    }
    appendHead(bytes, size, kBankKind, kBankVersion, preset, preset.programs.size());
    append(bytes, static_cast<std::uint32_t>(preset.currentProgram));
    bytes.resize(kBankHeader, 0);
    for (const PresetProgram& program : preset.programs) {
        appendProgram(bytes, preset, program);
    }
    return bytes;
}

} // namespace zelvatone
