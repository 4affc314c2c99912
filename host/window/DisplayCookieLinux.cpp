#include "host/window/DisplayCookie.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <sys/mman.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <string_view>

namespace zelvatone {

namespace {

// Numbers stand with their highest byte first, texts after their length.
void append(std::string& bytes, std::size_t number) {
    bytes += static_cast<char>(number >> 8U);
    bytes += static_cast<char>(number);
}

void append(std::string& bytes, std::string_view text) {
    append(bytes, text.size());
    bytes += text;
}

// One entry of an X authority file, which holds for any display: the number of ours is not known
// before the server has started.
std::string authorityFor(std::string_view cookie) {
    constexpr std::size_t kAnyFamily = 0xFFFF;
    std::string bytes;
    append(bytes, kAnyFamily);
    append(bytes, ""); // address
    append(bytes, ""); // number of the display
    append(bytes, "MIT-MAGIC-COOKIE-1");
    append(bytes, cookie);
    return bytes;
}

} // namespace

DisplayCookie::DisplayCookie() : descriptor_(memfd_create("zelvatone-display", 0)) {
    std::array<char, 16> cookie{}; // as long as servers take it
    const bool isRandom = getrandom(cookie.data(), cookie.size(), 0) == ssize_t{cookie.size()};
    const std::string bytes = authorityFor({cookie.data(), cookie.size()});
    const auto size = static_cast<ssize_t>(bytes.size());
    if (descriptor_ < 0 || !isRandom || write(descriptor_, bytes.data(), bytes.size()) != size) {
        throw InputError("cannot make the key to a display");
    }
}

DisplayCookie::~DisplayCookie() {
    close(descriptor_);
}

std::string DisplayCookie::path() const {
    return formatText("/proc/{}/fd/{}", getpid(), descriptor_);
}

} // namespace zelvatone
