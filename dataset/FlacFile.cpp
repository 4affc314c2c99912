#include "dataset/FlacFile.h"

#include "dataset/BitWriter.h"
#include "dataset/FlacChecksum.h"
#include "dataset/FlacPredictor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zelvatone {

namespace {

constexpr std::size_t kFrame = 4096; // samples; what the library has too
constexpr int kBits = 24;            // of a sample
constexpr int kPartitionBits = 4;    // a frame is coded in 2^4 parts, if it can be halved so often
constexpr std::size_t kSlack = 8;    // bytes that a BitWriter may write to beyond the last

// The kinds of subframe and of residual coding, as the format counts them.
constexpr std::uint64_t kConstant = 0;
constexpr std::uint64_t kVerbatim = 1;
constexpr std::uint64_t kFixed = 8;    // and the order of the predictor
constexpr std::uint64_t kLongRice = 1; // parameters of 5 bits
constexpr int kRiceBits = 5;
constexpr int kRiceLimit = 30; // 31 would mean numbers that are not coded

constexpr std::size_t kLanes = 4; // what every x86-64 processor computes at once
using Floats __attribute__((vector_size(4 * kLanes))) = float;
using Ints __attribute__((vector_size(4 * kLanes))) = std::int32_t;

using Residuals = std::array<std::uint32_t, kFrame>;

// A number in two's complement.
void putSample(BitWriter& bits, std::int32_t number) {
    bits.put(static_cast<std::uint32_t>(number) & ((1U << kBits) - 1), kBits);
}

// A Rice code has the upper bits of a number in unary, the `low` others as they are.
struct RicePart {
    std::span<const std::uint32_t> residuals;
    int low = 0;
    std::uint64_t bits = 0; // at most
};

// Bits that all residuals of a part take, at most.
std::uint64_t riceBits(std::uint64_t count, std::uint64_t sum, int low) {
    return count * static_cast<std::uint64_t>(low + 1) + (sum >> low);
}

RicePart ricePart(std::span<const std::uint32_t> residuals) {
    std::uint64_t sum = 0;
    for (const std::uint32_t residual : residuals) {
        sum += residual;
    }
    const std::uint64_t count = residuals.size();
    // The best is near the number of bits of the mean, or one or two less.
    const int highest = std::min(static_cast<int>(std::bit_width(sum / count)), kRiceLimit);
    RicePart part{residuals, highest, riceBits(count, sum, highest)};
    for (int low = std::max(0, highest - 2); low < highest; ++low) {
        const std::uint64_t bits = riceBits(count, sum, low);
        if (bits < part.bits) {
            part.low = low;
            part.bits = bits;
        }
    }
    return part;
}

// One residual's code.
struct RiceCode {
    std::uint64_t value;
    std::uint64_t count; // bits
};

RiceCode riceCode(std::uint32_t residual, int low) {
    const std::uint64_t one = std::uint64_t{1} << low; // ends the unary part
    return {one | (residual & (one - 1)), (residual >> low) + 1 + static_cast<std::uint64_t>(low)};
}

constexpr std::uint64_t kMostAtOnce = 57; // bits that a BitWriter takes

// Leaves kRiceLimit + 1 bits at least to the last step: all but the zeros.
void putLong(BitWriter& bits, RiceCode code) {
    constexpr int kZeros = 26;
    for (; code.count > kMostAtOnce; code.count -= kZeros) {
        bits.put(0, kZeros);
    }
    bits.put(code.value, static_cast<int>(code.count));
}

void putRice(BitWriter& bits, const RicePart& part) {
    bits.put(static_cast<std::uint64_t>(part.low), kRiceBits);
    std::size_t i = 0;
    for (; i + 2 <= part.residuals.size(); i += 2) {
        const RiceCode first = riceCode(part.residuals[i], part.low);
        const RiceCode second = riceCode(part.residuals[i + 1], part.low);
        if (first.count + second.count <= kMostAtOnce) {
            bits.put(first.value << second.count | second.value,
                     static_cast<int>(first.count + second.count));
        } else {
            putLong(bits, first);
            putLong(bits, second);
        }
    }
    if (i < part.residuals.size()) {
        putLong(bits, riceCode(part.residuals[i], part.low));
    }
}

class FlacFrames {
public:
    FlacFrames(std::span<const std::int32_t> numbers, std::vector<char>& bytes)
        : numbers_(numbers), bytes_(bytes) {}

    void write() {
        for (std::size_t at = 0; at < numbers_.size(); at += kFrame) {
            writeFrame(at / kFrame, numbers_.subspan(at, std::min(kFrame, numbers_.size() - at)));
        }
    }

private:
    void writeFrame(std::size_t number, std::span<const std::int32_t> samples) {
        constexpr std::size_t kMostHeader = 16;
        constexpr std::size_t kSum = 2; // bytes
        const std::size_t start = bytes_.size();
        const std::size_t most = samples.size() * kBits / 8 + kMostHeader + kSum + kSlack;
        bytes_.resize(start + most);
        BitWriter header(bytes_.data() + start);
        putHeader(header, number, samples.size());
        char* end = header.align();
        *end = static_cast<char>(flacHeaderSum({bytes_.data() + start, end}));
        BitWriter bits(end + 1);
        putSubframe(bits, samples);
        end = bits.align();
        const std::uint32_t sum = flacFrameSum({bytes_.data() + start, end});
        *end++ = static_cast<char>(sum >> 8U);
        *end++ = static_cast<char>(sum);
        bytes_.resize(static_cast<std::size_t>(end - bytes_.data()));
    }

    static void putHeader(BitWriter& bits, std::size_t number, std::size_t samples) {
        constexpr std::uint64_t kSync = 0xFFF8;    // and that frames but the last are equally long
        constexpr std::uint64_t kUsualLength = 12; // 256 * 2^(12 - 8)
        constexpr std::uint64_t kOwnLength = 7;    // in 16 bits after the number
        constexpr std::uint64_t kOneChannelOf24 = 0x0C; // and the rate as the file's header has it
        const bool isUsual = samples == kFrame;
        bits.put(kSync, 16);
        bits.put((isUsual ? kUsualLength : kOwnLength) << 4U, 8);
        bits.put(kOneChannelOf24, 8);
        putCounter(bits, number);
        if (!isUsual) {
            bits.put(samples - 1, 16);
        }
    }

    // As UTF-8 writes the number of a character, for numbers up to 2^31 - 1.
    static void putCounter(BitWriter& bits, std::uint64_t number) {
        constexpr std::uint64_t kOneByte = 0x80; // up to it
        if (number < kOneByte) {
            bits.put(number, 8);
            return;
        }
        const int more =
            (static_cast<int>(std::bit_width(number)) - 2) / 5; // bytes of 6 bits after the first
        const std::uint64_t mark = (0xFF00U >> (more + 1)) & 0xFFU;
        bits.put(mark | number >> (6 * more), 8);
        for (int i = more - 1; i >= 0; --i) {
            bits.put(0x80U | ((number >> (6 * i)) & 0x3FU), 8);
        }
    }

    void putSubframe(BitWriter& bits, std::span<const std::int32_t> samples) {
        const auto putKind = [&](std::uint64_t kind) { bits.put(kind << 1U, 8); };
        if (std::equal(samples.begin() + 1, samples.end(), samples.begin())) {
            putKind(kConstant);
            putSample(bits, samples.front());
            return;
        }
        if (samples.size() <= kHighestFlacOrder || !putPredicted(bits, samples)) {
            putKind(kVerbatim);
            for (const std::int32_t sample : samples) {
                putSample(bits, sample);
            }
        }
    }

    // Returns false, and puts nothing, for what may take more bits than the samples do.
    bool putPredicted(BitWriter& bits, std::span<const std::int32_t> samples) {
        const int order = bestFlacOrder(samples);
        flacResiduals(samples, order, residuals_);
        const int halvings = std::min(kPartitionBits, std::countr_zero(samples.size()));
        const std::size_t length = samples.size() >> halvings;
        const auto warmUp = static_cast<std::size_t>(order);
        if (length <= warmUp) {
            return false;
        }
        std::array<RicePart, 1U << kPartitionBits> parts;
        const std::size_t count = std::size_t{1} << halvings;
        std::uint64_t total = kBits * warmUp + 16;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t skipped = i == 0 ? warmUp : 0; // they come as they are
            parts[i] = ricePart(std::span<const std::uint32_t>(residuals_)
                                    .subspan(i * length + skipped, length - skipped));
            total += parts[i].bits + kRiceBits;
        }
        if (total >= kBits * samples.size()) {
            return false;
        }
        bits.put((kFixed + warmUp) << 1U, 8);
        for (const std::int32_t sample : samples.first(warmUp)) {
            putSample(bits, sample);
        }
        bits.put(kLongRice << 4U | static_cast<std::uint64_t>(halvings), 6);
        for (std::size_t i = 0; i < count; ++i) {
            putRice(bits, parts[i]);
        }
        return true;
    }

    std::span<const std::int32_t> numbers_;
    std::vector<char>& bytes_;
    Residuals residuals_{};
};

// The name of the format and the one block of metadata that every file has.
std::vector<char> header(std::size_t samples, int sampleRate) {
    constexpr std::size_t kBytes = 42; // the name, the block's header, the block
    constexpr std::uint64_t kLastBlock = 0x80;
    std::vector<char> bytes(kBytes + kSlack);
    BitWriter bits(bytes.data());
    bits.put(0x664C6143, 32); // "fLaC"
    bits.put(kLastBlock, 8);
    bits.put(kBytes - 8, 24);
    bits.put(kFrame, 16); // the shortest frame but the last, and the longest
    bits.put(kFrame, 16);
    bits.put(0, 48); // the sizes of the frames: not known
    bits.put(static_cast<std::uint64_t>(sampleRate), 20);
    bits.put(0, 3);         // channels, less one
    bits.put(kBits - 1, 5); //
    bits.put(samples, 36);  //
    bytes.resize(kBytes);   // and no MD5 sum
    return bytes;
}

// Rounds to the nearest, to the even one of two: the processor's own way.
Ints rounded(Floats lanes) {
#if defined(__SSE2__)
    return reinterpret_cast<Ints>(_mm_cvtps_epi32(lanes));
#else
    Ints numbers;
    for (std::size_t i = 0; i < kLanes; ++i) {
        numbers[i] = static_cast<std::int32_t>(std::nearbyint(lanes[i]));
    }
    return numbers;
#endif
}

Ints numbersOf(Floats lanes) {
    constexpr float kFullScale = 0x1p23F;
    lanes *= kFullScale; // exact
    lanes = lanes < -kFullScale ? Floats{} - kFullScale : lanes;
    lanes = lanes > kFullScale - 1.0F ? Floats{} + (kFullScale - 1.0F) : lanes;
    return rounded(lanes);
}

} // namespace

std::vector<std::int32_t> flacNumbers(std::span<const float> samples) {
    std::vector<std::int32_t> numbers(samples.size());
    std::size_t i = 0;
    for (; i + kLanes <= samples.size(); i += kLanes) {
        Floats lanes;
        std::memcpy(&lanes, samples.data() + i, sizeof lanes);
        const Ints whole = numbersOf(lanes);
        std::memcpy(numbers.data() + i, &whole, sizeof whole);
    }
    for (; i < samples.size(); ++i) {
        numbers[i] = numbersOf(Floats{samples[i]})[0];
    }
    return numbers;
}

std::vector<char> flacFile(std::span<const std::int32_t> numbers, int sampleRate) {
    std::vector<char> bytes = header(numbers.size(), sampleRate);
    FlacFrames(numbers, bytes).write();
    return bytes;
}

} // namespace zelvatone
