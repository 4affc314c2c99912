// Puts picture files into the code, and finds them by name.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <span>
#include <string_view>

// The assembler copies the file, which it finds in resources/, between two symbols. At the top of a
// source, outside of any namespace.
#define EMBED_PICTURE(symbol, file)                                                                \
    asm(".pushsection .rodata\n"                                                                   \
        ".balign 16\n"                                                                             \
        ".local " #symbol "\n" #symbol ":\n"                                                       \
        ".incbin \"" file "\"\n"                                                                   \
        ".local " #symbol "End\n" #symbol "End:\n"                                                 \
        ".popsection\n");                                                                          \
    extern "C" {                                                                                   \
    [[gnu::visibility("hidden")]] extern const std::uint8_t symbol[];                              \
    [[gnu::visibility("hidden")]] extern const std::uint8_t symbol##End[];                         \
    }

namespace zelvatone {

struct EmbeddedFile {
    std::string_view name;
    const std::uint8_t* begin;
    const std::uint8_t* end;
};

// The bytes of the one of `files` that is called `name`, whatever the case of its letters; empty if
// there is none.
inline std::span<const std::uint8_t> findPicture(std::span<const EmbeddedFile> files,
                                                 std::string_view name) {
    const auto isSameLetter = [](char a, char b) {
        const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
        return lower(a) == lower(b);
    };
    const auto found = std::ranges::find_if(files, [=](const EmbeddedFile& file) {
        return std::ranges::equal(file.name, name, isSameLetter);
    });
    if (found == files.end()) {
        return {};
    }
    return {found->begin, found->end};
}

} // namespace zelvatone
