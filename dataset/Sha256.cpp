#include "dataset/Sha256.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <vector>

namespace zelvatone {

Sha256::Sha256() : context_() {
    sha256_init(&context_);
}

void Sha256::add(std::span<const char> bytes) {
    sha256_update(&context_, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Sha256::take() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context_, digest.size(), digest.data()); // starts again too
    std::string text;
    for (const std::uint8_t byte : digest) {
        text += formatText("{:02x}", byte);
    }
    return text;
}

std::string sha256Of(const std::filesystem::path& path) {
    constexpr std::size_t kChunk = 1 << 20; // a second's wait for Ctrl+C at most on a slow disk
    std::ifstream stream(path, std::ios::binary);
    std::vector<char> chunk(kChunk);
    Sha256 sum;
    while (stream) {
        InterruptWatch::check();
        stream.read(chunk.data(), kChunk);
        sum.add({chunk.data(), static_cast<std::size_t>(stream.gcount())});
    }
    if (!stream.eof()) {
        throw InputError(formatText("{} cannot be read", path.string()));
    }
    return sum.take();
}

} // namespace zelvatone
