#include "host/audio/SampleSpool.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <algorithm>
#include <cstdio>

namespace zelvatone {

namespace {

std::int64_t bytesOf(std::span<const float> samples) {
    return static_cast<std::int64_t>(samples.size_bytes());
}

} // namespace

SampleSpool::SampleSpool(const std::filesystem::path& beside) : file_(beside) {}

void SampleSpool::write(std::span<const float> samples) {
    file_.write(samples.data(), bytesOf(samples));
    file_.check();
}

void SampleSpool::rewind() {
    unread_ = file_.size() / static_cast<std::int64_t>(sizeof(float));
    file_.seek(0, SEEK_SET);
}

std::span<float> SampleSpool::read(std::span<float> target) {
    const auto count = std::min(static_cast<std::int64_t>(target.size()), unread_);
    const std::span<float> wanted = target.first(static_cast<std::size_t>(count));
    if (file_.read(wanted.data(), bytesOf(wanted)) != bytesOf(wanted)) {
        throw InputError(
            formatText("cannot write {}: it cannot be read back", file_.path().string()));
    }
    unread_ -= count;
    return wanted;
}

} // namespace zelvatone
