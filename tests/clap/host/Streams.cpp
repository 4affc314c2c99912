#include "tests/clap/host/Streams.h"

#include <algorithm>
#include <cstdint>

namespace zelvatone::test {

ByteSource::ByteSource(std::string bytes, std::size_t portion)
    : bytes_(std::move(bytes)), portion_(portion), record_{.context = this, .read = read} {}

std::int64_t ByteSource::read(const clap::InputStream* stream, void* buffer, std::uint64_t size) {
    auto& self = *static_cast<ByteSource*>(stream->context);
    if (self.fails) {
        return -1;
    }
    const std::size_t count =
        std::min({static_cast<std::size_t>(size), self.portion_, self.bytes_.size() - self.done_});
    std::copy_n(self.bytes_.data() + self.done_, count, static_cast<char*>(buffer));
    self.done_ += count;
    return static_cast<std::int64_t>(count);
}

ByteSink::ByteSink(std::size_t portion, std::size_t most)
    : portion_(portion), most_(most), record_{.context = this, .write = write} {}

std::int64_t ByteSink::write(const clap::OutputStream* stream, const void* buffer,
                             std::uint64_t size) {
    auto& self = *static_cast<ByteSink*>(stream->context);
    const std::size_t count = std::min(static_cast<std::size_t>(size), self.portion_);
    if (self.bytes.size() + count > self.most_) {
        return -1;
    }
    self.bytes.append(static_cast<const char*>(buffer), count);
    return static_cast<std::int64_t>(count);
}

} // namespace zelvatone::test
