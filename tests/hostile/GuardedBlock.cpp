#include "tests/hostile/GuardedBlock.h"

#include "tests/hostile/Promise.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace zelvatone::test {

namespace {

constexpr std::size_t kZone = 64; // samples; wider than the widest vector that a kernel stores
// A NaN that no calculation makes: arithmetic gives the one without a payload, or hands on
// another's.
constexpr std::uint32_t kMark = 0x7FA5A5A5;

bool isMark(float sample) {
    return std::bit_cast<std::uint32_t>(sample) == kMark;
}

bool haveSameBits(const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

} // namespace

void GuardedBlock::prepare(std::vector<float>& channel) const {
    channel.assign(frames_ + 2 * kZone, std::bit_cast<float>(kMark));
}

void GuardedBlock::check(const std::vector<float>& channel) const {
    const auto begin = channel.begin() + kZone;
    const auto end = channel.end() - kZone;
    expectPromise(std::all_of(channel.begin(), begin, isMark) &&
                      std::all_of(end, channel.end(), isMark),
                  "a block writes nothing beside its buffers");
    expectPromise(std::none_of(begin, end, isMark), "a block writes every sample");
}

void GuardedBlock::render(const HostedEffect& effect, VstInt32 frames) {
    frames_ = static_cast<std::size_t>(frames);
    prepare(left_);
    prepare(right_);
    std::array<float*, 2> outputs{left_.data() + kZone, right_.data() + kZone};
    // Without samples the contract promises no buffers either.
    effect.record->processReplacing(effect.record, nullptr, frames == 0 ? nullptr : outputs.data(),
                                    frames);
    countRequest();
    check(left_);
    check(right_);
    expectPromise(haveSameBits(left_, right_), "both channels hold the same sound");
}

bool GuardedBlock::isFinite() const {
    return std::all_of(left_.begin() + kZone, left_.end() - kZone,
                       [](float sample) { return std::isfinite(sample); });
}

bool GuardedBlock::hasBitsOf(const GuardedBlock& other) const {
    return haveSameBits(left_, other.left_) && haveSameBits(right_, other.right_);
}

} // namespace zelvatone::test
