#include "host/preset/PresetReader.h"

#include "host/Error.h"
#include "host/files/FileBytes.h"
#include "host/midi/ByteReader.h"
#include "host/preset/PresetFormat.h"
#include "host/text/Format.h"

#include <algorithm>
#include <bit>
#include <string>

namespace zelvatone {

namespace {

// A bank of a thousand programs of a thousand parameters has four megabytes.
constexpr std::size_t kLargestFile = 64U << 20U;

// What stands in front of both kinds of record.
struct RecordHead {
    std::uint32_t kind;
    std::uint32_t version;
    VstInt32 pluginId;
    VstInt32 pluginVersion;
    std::uint32_t count; // of parameters or programs
};

std::string kindText(std::uint32_t kind) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += static_cast<char>((kind >> shift) & 0xFFU);
    }
    return text;
}

void checkKind(std::uint32_t kind, const std::string& what) {
    if (kind == kProgramChunkKind || kind == kBankChunkKind) {
        throw InputError(formatText("{} is a chunk ('{}') that only its plug-in can read; 'FxCk' "
                                    "and 'FxBk' hold parameters",
                                    what, kindText(kind)));
    }
    if (kind != kProgramKind && kind != kBankKind) {
        throw InputError(formatText("{} is of the unknown kind '{}'", what, kindText(kind)));
    }
}

void checkSize(std::uint64_t announced, std::uint64_t there, const std::string& what) {
    if (announced > there) {
        throw InputError(
            formatText("{} is cut short: {} bytes announced, {} found", what, announced, there));
    }
    if (announced < there) {
        throw InputError(
            formatText("{} has {} bytes more than it announces", what, there - announced));
    }
}

// `reader` holds the record and nothing else.
RecordHead takeHead(ByteReader& reader, const std::string& what) {
    if (reader.remaining() < kMarkAndSize || reader.number32() != kPresetMark) {
        throw InputError(what + " is not a preset: it does not begin with 'CcnK'");
    }
    const std::uint32_t size = reader.number32();
    checkSize(size, reader.remaining(), what);
    RecordHead head{};
    head.kind = reader.number32();
    checkKind(head.kind, what);
    head.version = reader.number32();
    head.pluginId = static_cast<VstInt32>(reader.number32());
    head.pluginVersion = static_cast<VstInt32>(reader.number32());
    head.count = reader.number32();
    return head;
}

void checkVersion(std::uint32_t version, std::uint32_t newest, const std::string& what) {
    if (version < 1 || version > newest) {
        throw InputError(formatText("{} is of the unknown format version {}", what, version));
    }
}

std::string takeName(ByteReader& reader, const std::string& what) {
    const auto bytes = reader.take(kPresetNameLength);
    const auto end = std::find(bytes.begin(), bytes.end(), 0);
    if (end == bytes.end()) {
        throw InputError(formatText("the name of {} does not end within its 28 bytes", what));
    }
    return {bytes.begin(), end};
}

float takeValue(ByteReader& reader, std::uint32_t index, const std::string& what) {
    const auto value = std::bit_cast<float>(reader.number32());
    if (!(value >= 0.0F && value <= 1.0F)) { // NaN fails too
        const std::string number = value == value ? formatText("{:.6f}", value) : "NaN";
        throw InputError(formatText("parameter {} of {} is {}, not 0 to 1", index, what, number));
    }
    return value;
}

// What follows a program's head. `reader` holds it and nothing else.
PresetProgram takeProgram(ByteReader& reader, const RecordHead& head, const std::string& what) {
    checkVersion(head.version, 1, what);
    PresetProgram program;
    program.name = takeName(reader, what);
    if (reader.remaining() != std::uint64_t{head.count} * 4) {
        throw InputError(formatText("{} announces {} parameters and has {} bytes for them", what,
                                    head.count, reader.remaining()));
    }
    for (std::uint32_t i = 0; i < head.count; ++i) {
        program.values.push_back(takeValue(reader, i, what));
    }
    return program;
}

// One record off the front of what follows the bank's head.
std::span<const std::uint8_t> takeRecord(ByteReader& reader, const std::string& what) {
    if (reader.remaining() < kMarkAndSize) {
        throw InputError(what + " is cut short");
    }
    ByteReader ahead = reader;
    ahead.number32();
    const std::size_t size = ahead.number32();
    return reader.take(std::min(kMarkAndSize + size, reader.remaining()));
}

// A program inside a bank must be like its bank and like the first program.
PresetProgram takeBankProgram(ByteReader& reader, const Preset& bank) {
    const std::string what = formatText("program {}", bank.programs.size());
    ByteReader record(takeRecord(reader, what), what);
    const RecordHead head = takeHead(record, what);
    if (head.kind != kProgramKind) {
        throw InputError(what + " is a bank inside a bank");
    }
    if (head.pluginId != bank.pluginId) {
        throw InputError(what + " is for another plug-in than its bank");
    }
    if (!bank.programs.empty() && head.count != bank.programs[0].values.size()) {
        throw InputError(formatText("{} has {} parameters, program 0 {}", what, head.count,
                                    bank.programs[0].values.size()));
    }
    return takeProgram(record, head, what);
}

int takeCurrentProgram(ByteReader& reserved, const RecordHead& head) {
    const std::uint32_t current = head.version == 1 ? 0 : reserved.number32();
    if (current >= std::max(head.count, 1U)) {
        throw InputError(formatText("the bank's current program is {} of {}", current, head.count));
    }
    return static_cast<int>(current);
}

void takeBank(ByteReader& reader, const RecordHead& head, Preset& bank) {
    checkVersion(head.version, 2, "the bank");
    ByteReader reserved(reader.take(kBankReserved), "the bank");
    bank.currentProgram = takeCurrentProgram(reserved, head);
    const std::string announced = formatText("the bank announces {} programs", head.count);
    for (std::uint32_t i = 0; i < head.count; ++i) {
        if (reader.atEnd()) {
            throw InputError(formatText("{} and has {}", announced, i));
        }
        bank.programs.push_back(takeBankProgram(reader, bank));
    }
    if (!reader.atEnd()) {
        throw InputError(
            formatText("{} and has {} bytes after them", announced, reader.remaining()));
    }
}

} // namespace

Preset parsePreset(std::span<const std::uint8_t> bytes) {
    ByteReader reader(bytes, "the file");
    const RecordHead head = takeHead(reader, "the file");
    Preset preset;
    preset.isBank = head.kind == kBankKind;
    preset.pluginId = head.pluginId;
    preset.pluginVersion = head.pluginVersion;
    if (preset.isBank) {
        takeBank(reader, head, preset);
    } else {
        preset.programs.push_back(takeProgram(reader, head, "the program"));
    }
    return preset;
}

Preset readPreset(const std::filesystem::path& path) {
    try {
        return parsePreset(readBytes(path, kLargestFile, "preset file"));
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", path.string(), error.what()));
    }
}

} // namespace zelvatone
