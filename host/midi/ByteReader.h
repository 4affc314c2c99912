// Takes numbers off the front of a stretch of bytes and refuses to run past its end.
#pragma once

#include "host/Error.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace zelvatone {

// The bytes end before what they hold does.
class CutShort : public InputError {
public:
    using InputError::InputError;
};

class ByteReader {
public:
    // `name` says in errors what the bytes are, e.g. "track 2".
    ByteReader(std::span<const std::uint8_t> bytes, std::string name);

    bool atEnd() const { return bytes_.empty(); }
    std::size_t remaining() const { return bytes_.size(); }

    // Each takes what it returns. Throws CutShort when fewer bytes are left.
    std::uint8_t byte();
    std::uint16_t number16();
    std::uint32_t number32();
    // Seven bits a byte, at most four bytes: 0 to 2^28 - 1.
    std::uint32_t variableLength();
    std::span<const std::uint8_t> take(std::size_t count);

    std::uint8_t peek() const;
    // Throws InputError: "NAME is damaged: WHAT".
    [[noreturn]] void fail(const std::string& what) const;

private:
    std::span<const std::uint8_t> bytes_;
    std::string name_;
};

} // namespace zelvatone
