// A file that lies in memory.
#pragma once

#include "host/files/ByteTarget.h"

#include <span>
#include <utility>
#include <vector>

namespace zelvatone {

class MemoryFile final : public ByteTarget {
public:
    std::int64_t read(void* target, std::int64_t count) override;
    std::int64_t write(const void* source, std::int64_t count) override;
    // Returns -1, and stays where it is, for a place before the start.
    std::int64_t seek(std::int64_t offset, int whence) override;
    std::int64_t size() override { return static_cast<std::int64_t>(bytes_.size()); }

    void check() const override {}
    std::string name() const override { return "a file in memory"; }

    std::span<const char> bytes() const { return bytes_; }
    // Hands the bytes over. Nothing is written or read afterwards.
    std::vector<char> take() { return std::move(bytes_); }

private:
    std::vector<char> bytes_;
    std::int64_t position_ = 0;
};

} // namespace zelvatone
