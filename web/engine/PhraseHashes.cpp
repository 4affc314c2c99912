// Prints the checksums of what this machine makes of the phrase, one for each program, as JSON: the
// page compares them with what the browser makes of it.

#include "formats/Instrument.h"
#include "web/engine/PhraseRenderer.h"

#include <nettle/sha2.h>

#include <array>
#include <bit>
#include <cstdio>
#include <string>

namespace {

static_assert(std::endian::native == std::endian::little); // as in every browser

std::string checksumOf(const std::vector<float>& samples) {
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, samples.size() * sizeof(float),
                  reinterpret_cast<const std::uint8_t*>(samples.data()));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context, digest.size(), digest.data());
    std::string text;
    for (const std::uint8_t byte : digest) {
        constexpr const char* kDigits = "0123456789abcdef";
        text += {kDigits[byte / 16U], kDigits[byte % 16U]};
    }
    return text;
}

} // namespace

int main() {
    using namespace zelvatone;
    std::printf("{\n  \"sampleRate\": %d,\n  \"hashes\": [", kPhraseRate);
    const auto count = static_cast<std::int32_t>(factoryBank().size());
    for (std::int32_t program = 0; program < count; ++program) {
        std::printf("%s\n    \"%s\"", program == 0 ? "" : ",",
                    checksumOf(renderPhrase(program)).c_str());
    }
    std::printf("\n  ]\n}\n");
}
