// The published layout of VST 2 preset files, of the kind that holds parameter values. All numbers
// are big-endian and of four bytes, floats in IEEE's form.
//
//   program (.fxp)  mark, size, kind, 1, plug-in id, plug-in version, parameters, name[28], values
//   bank (.fxb)     mark, size, kind, 1 or 2, plug-in id, plug-in version, programs, reserved[128],
//                   then each program as a whole .fxp record
//
// The size counts the bytes after it. A bank of version 2 has the current program's number in
// the first four reserved bytes.
#pragma once

#include "vst2/aeffect.h"

#include <cstddef>
#include <cstdint>

namespace zelvatone {

constexpr std::uint32_t kPresetMark = vstFourCharacters('C', 'c', 'n', 'K');
constexpr std::uint32_t kProgramKind = vstFourCharacters('F', 'x', 'C', 'k');
constexpr std::uint32_t kBankKind = vstFourCharacters('F', 'x', 'B', 'k');
// The kinds whose content only the plug-in itself can read.
constexpr std::uint32_t kProgramChunkKind = vstFourCharacters('F', 'P', 'C', 'h');
constexpr std::uint32_t kBankChunkKind = vstFourCharacters('F', 'B', 'C', 'h');

constexpr std::size_t kPresetNameLength = 28; // bytes, the terminating zero among them
constexpr std::size_t kMarkAndSize = 8;       // bytes that a record's size does not count
// Bytes of a record's fixed part, mark and size included.
constexpr std::size_t kProgramHeader = kMarkAndSize + std::size_t{5} * 4 + kPresetNameLength;
constexpr std::size_t kBankReserved = 128;
constexpr std::size_t kBankHeader = kMarkAndSize + std::size_t{5} * 4 + kBankReserved;

} // namespace zelvatone
