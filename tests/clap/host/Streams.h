// Streams of a state, to and from a plug-in.
#pragma once

#include "clap/abi/Extensions.h"

#include <cstddef>
#include <string>
#include <utility>

namespace zelvatone::test {

// Hands out `bytes`, at most `portion` at a call.
class ByteSource {
public:
    explicit ByteSource(std::string bytes, std::size_t portion = SIZE_MAX);
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    const clap::InputStream& record() const { return record_; }
    bool fails = false; // every read is an error

private:
    static std::int64_t read(const clap::InputStream* stream, void* buffer, std::uint64_t size);

    std::string bytes_;
    std::size_t portion_;
    std::size_t done_ = 0;
    clap::InputStream record_;
};

// Takes bytes, at most `portion` at a call, and fails after `most` bytes.
class ByteSink {
public:
    explicit ByteSink(std::size_t portion = SIZE_MAX, std::size_t most = SIZE_MAX);
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;

    const clap::OutputStream& record() const { return record_; }
    std::string bytes;

private:
    static std::int64_t write(const clap::OutputStream* stream, const void* buffer,
                              std::uint64_t size);

    std::size_t portion_;
    std::size_t most_;
    clap::OutputStream record_;
};

} // namespace zelvatone::test
