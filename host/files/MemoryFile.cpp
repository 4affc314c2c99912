#include "host/files/MemoryFile.h"

#include <algorithm>
#include <cstdio>

namespace zelvatone {

std::int64_t MemoryFile::read(void* target, std::int64_t count) {
    const std::int64_t got = std::clamp<std::int64_t>(size() - position_, 0, count);
    std::copy_n(bytes_.data() + position_, got, static_cast<char*>(target));
    position_ += got;
    return got;
}

std::int64_t MemoryFile::write(const void* source, std::int64_t count) {
    const std::int64_t end = position_ + count;
    if (end > size()) {
        bytes_.resize(static_cast<std::size_t>(end));
    }
    std::copy_n(static_cast<const char*>(source), count, bytes_.data() + position_);
    position_ = end;
    return count;
}

std::int64_t MemoryFile::seek(std::int64_t offset, int whence) {
    const std::int64_t from = whence == SEEK_CUR ? position_ : whence == SEEK_END ? size() : 0;
    if (from + offset < 0) {
        return -1;
    }
    position_ = from + offset;
    return position_;
}

} // namespace zelvatone
