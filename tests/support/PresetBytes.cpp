#include "tests/support/PresetBytes.h"

namespace zelvatone {

RecordBytes& RecordBytes::text(const std::string& text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
}

RecordBytes& RecordBytes::zeros(std::size_t count) {
    bytes_.resize(bytes_.size() + count);
    return *this;
}

RecordBytes& RecordBytes::number(std::uint32_t number) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes_.push_back(static_cast<std::uint8_t>(number >> shift));
    }
    return *this;
}

RecordBytes& RecordBytes::bytes(const Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
}

namespace {

// The mark and the size of what follows them.
Bytes whole(const std::string& mark, int sizeError, const RecordBytes& rest) {
    const auto size = static_cast<int>(rest.all().size()) + sizeError;
    return RecordBytes()
        .text(mark)
        .number(static_cast<std::uint32_t>(size))
        .bytes(rest.all())
        .all();
}

std::uint32_t count(std::size_t there, int error) {
    return static_cast<std::uint32_t>(static_cast<int>(there) + error);
}

} // namespace

Bytes programBytes(const ProgramFields& fields) {
    RecordBytes rest;
    rest.text(fields.kind).number(fields.version).number(fields.pluginId);
    rest.number(fields.pluginVersion).number(count(fields.values.size(), fields.countError));
    rest.text(fields.name).zeros(28 - fields.name.size());
    for (const std::uint32_t value : fields.values) {
        rest.number(value);
    }
    return whole(fields.mark, fields.sizeError, rest);
}

Bytes bankBytes(const BankFields& fields) {
    RecordBytes rest;
    rest.text(fields.kind).number(fields.version).number(fields.pluginId).number(1);
    rest.number(count(fields.programs.size(), fields.countError));
    rest.number(fields.currentProgram).zeros(124);
    for (const Bytes& program : fields.programs) {
        rest.bytes(program);
    }
    return whole("CcnK", fields.sizeError, rest);
}

} // namespace zelvatone
