#include "tests/plugin/HostedEffect.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

bool sameBits(const std::vector<float>& a, const std::vector<float>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](float x, float y) {
        return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
    });
}

} // namespace

float StereoBlock::peak() const {
    float highest = 0.0F;
    for (const float sample : left) {
        highest = std::max(highest, std::abs(sample));
    }
    return highest;
}

bool operator==(const StereoBlock& a, const StereoBlock& b) {
    return sameBits(a.left, b.left) && sameBits(a.right, b.right);
}

VstIntPtr HostedEffect::ask(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                            float opt) const {
    return record->dispatcher(record, opcode, index, value, ptr, opt);
}

void HostedEffect::setParameter(VstInt32 index, float value) const {
    record->setParameter(record, index, value);
}

float HostedEffect::getParameter(VstInt32 index) const {
    return record->getParameter(record, index);
}

std::string HostedEffect::text(VstInt32 opcode, VstInt32 index) const {
    std::array<char, 256> buffer{};
    ask(opcode, index, 0, buffer.data());
    return buffer.data();
}

VstIntPtr HostedEffect::send(EventList events) const {
    return ask(effProcessEvents, 0, 0, events.record());
}

VstIntPtr HostedEffect::send(const std::vector<MidiMessage>& messages) const {
    return send(EventList(messages));
}

StereoBlock HostedEffect::render(VstInt32 frames, float before) const {
    const auto size = static_cast<std::size_t>(frames);
    StereoBlock block{std::vector<float>(size, before), std::vector<float>(size, before)};
    std::array<float*, 2> outputs{block.left.data(), block.right.data()};
    record->processReplacing(record, nullptr, outputs.data(), frames);
    return block;
}
