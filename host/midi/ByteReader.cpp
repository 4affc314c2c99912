#include "host/midi/ByteReader.h"

#include <utility>

namespace zelvatone {

ByteReader::ByteReader(std::span<const std::uint8_t> bytes, std::string name)
    : bytes_(bytes), name_(std::move(name)) {}

std::span<const std::uint8_t> ByteReader::take(std::size_t count) {
    if (count > bytes_.size()) {
        throw CutShort(name_ + " is cut short");
    }
    const auto taken = bytes_.first(count);
    bytes_ = bytes_.subspan(count);
    return taken;
}

std::uint8_t ByteReader::byte() {
    return take(1)[0];
}

std::uint16_t ByteReader::number16() {
    const unsigned high = byte();
    return static_cast<std::uint16_t>((high << 8U) | byte());
}

std::uint32_t ByteReader::number32() {
    const std::uint32_t high = number16();
    return (high << 16U) | number16();
}

std::uint32_t ByteReader::variableLength() {
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i) {
        const std::uint8_t next = byte();
        number = (number << 7U) | (next & 0x7FU);
        if ((next & 0x80U) == 0) {
            return number;
        }
    }
    fail("a number of more than four bytes");
}

std::uint8_t ByteReader::peek() const {
    if (bytes_.empty()) {
        throw CutShort(name_ + " is cut short");
    }
    return bytes_[0];
}

void ByteReader::fail(const std::string& what) const {
    throw InputError(name_ + " is damaged: " + what);
}

} // namespace zelvatone
