#include "web/engine/ProgramFile.h"

#include "host/preset/PresetFormat.h"
#include "params/ParameterTable.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace zelvatone {

namespace {

constexpr std::size_t kFileSize = kProgramHeader + std::size_t{4} * kParameterCount;

// The fields of four bytes that a program begins with, by their order.
enum Field : std::size_t { kMark, kSize, kKind, kVersion, kId, kIdVersion, kCount, kFieldCount };

constexpr std::size_t kNameAt = 4 * kFieldCount;

std::uint32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (const std::uint8_t byte : bytes.subspan(at, 4)) {
        number = number << 8U | byte;
    }
    return number;
}

std::uint32_t fieldOf(std::span<const std::uint8_t> bytes, Field field) {
    return numberAt(bytes, 4 * field);
}

// What is wrong with the head, an empty text if nothing is.
std::string errorInHead(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kProgramHeader || fieldOf(bytes, kMark) != kPresetMark) {
        return "the file is not a preset";
    }
    const std::uint32_t kind = fieldOf(bytes, kKind);
    if (kind == kBankKind) {
        return "the file is a bank, not a program (.fxp)";
    }
    if (kind != kProgramKind || fieldOf(bytes, kVersion) != 1) {
        return "the file is of an unknown kind";
    }
    if (fieldOf(bytes, kId) != static_cast<std::uint32_t>(kPluginId)) {
        return "the file is for another instrument";
    }
    if (fieldOf(bytes, kCount) != kParameterCount) {
        return "the file has another number of parameters";
    }
    if (bytes.size() != kFileSize || fieldOf(bytes, kSize) != kFileSize - kMarkAndSize) {
        return "the file is cut short or too long";
    }
    return {};
}

} // namespace

ProgramFile readProgramFile(std::span<const std::uint8_t> bytes) {
    ProgramFile file{.error = errorInHead(bytes), .program = {}};
    if (!file.error.empty()) {
        return file;
    }
    const auto name = bytes.subspan(kNameAt, kPresetNameLength);
    const auto end = std::find(name.begin(), name.end(), 0);
    if (end == name.end()) {
        file.error = "the name in the file does not end";
        return file;
    }
    file.program.name.assign(name.begin(), end);
    for (std::size_t at = kProgramHeader; at < kFileSize; at += 4) {
        const auto value = std::bit_cast<float>(numberAt(bytes, at));
        if (!(value >= 0.0F && value <= 1.0F)) { // NaN fails too
            file.error = "a value in the file is not a number from 0 to 1";
            return file;
        }
        file.program.values.push_back(value);
    }
    return file;
}

} // namespace zelvatone
