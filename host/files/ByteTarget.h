// Where encoders write to: a file on the disk, or one in memory.
#pragma once

#include <cstdint>
#include <string>

namespace zelvatone {

class ByteTarget {
public:
    ByteTarget() = default;
    virtual ~ByteTarget() = default;
    ByteTarget(const ByteTarget&) = delete;
    ByteTarget& operator=(const ByteTarget&) = delete;

    // As read(2), write(2) and lseek(2), but whole: fewer bytes come back at an error or at the
    // end only. The first failed write is remembered.
    virtual std::int64_t read(void* target, std::int64_t count) = 0;
    virtual std::int64_t write(const void* source, std::int64_t count) = 0;
    virtual std::int64_t seek(std::int64_t offset, int whence) = 0;
    virtual std::int64_t size() = 0;

    // Throws InputError when a write has failed so far.
    virtual void check() const = 0;
    // What errors call it.
    virtual std::string name() const = 0;
};

} // namespace zelvatone
