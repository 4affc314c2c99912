// Builds the bytes of preset files, whole and broken ones, by hand.
#pragma once

#include "tests/support/MidiFileBuilder.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace zelvatone {

// Bytes put one after the other.
class RecordBytes {
public:
    RecordBytes& text(const std::string& text);
    RecordBytes& zeros(std::size_t count);
    RecordBytes& number(std::uint32_t number);
    RecordBytes& bytes(const Bytes& bytes);

    const Bytes& all() const { return bytes_; }

private:
    Bytes bytes_;
};

struct ProgramFields {
    std::string mark = "CcnK";
    int sizeError = 0; // added to the true size
    std::string kind = "FxCk";
    std::uint32_t version = 1;
    std::uint32_t pluginId = 0x70726F67; // 'prog', the programmed instrument
    std::uint32_t pluginVersion = 1;
    int countError = 0; // added to the true count
    std::string name = "Test";
    std::vector<std::uint32_t> values{0x3E800000, 0, 0x3F800000}; // 0.25, 0, 1 as floats
};
Bytes programBytes(const ProgramFields& fields);

struct BankFields {
    int sizeError = 0;
    std::string kind = "FxBk";
    std::uint32_t version = 2;
    std::uint32_t pluginId = 0x70726F67;
    int countError = 0;
    std::uint32_t currentProgram = 0;
    std::vector<Bytes> programs = std::vector<Bytes>(4, programBytes({}));
};
Bytes bankBytes(const BankFields& fields);

} // namespace zelvatone
