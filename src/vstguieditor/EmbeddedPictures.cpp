#include "vstguieditor/EmbeddedPictures.h"

#include <algorithm>
#include <cctype>
#include <iterator>

// The assembler copies the file, which it finds in resources/, between two symbols.
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

EMBED_PICTURE(zelvatoneAnimKnob, "ANIMKNOB.PNG")
EMBED_PICTURE(zelvatoneBackground, "BACKGROUND.PNG")
EMBED_PICTURE(zelvatoneHelp1, "HELP1.PNG")
EMBED_PICTURE(zelvatoneHelp2, "HELP2.PNG")
EMBED_PICTURE(zelvatoneHelp3, "HELP3.PNG")
EMBED_PICTURE(zelvatoneHelp4, "HELP4.PNG")
EMBED_PICTURE(zelvatoneHelp5, "HELP5.PNG")
EMBED_PICTURE(zelvatoneHelpOverlay, "HELPOVERLAY.PNG")

namespace zelvatone {

namespace {

struct Picture {
    std::string_view name;
    const std::uint8_t* begin;
    const std::uint8_t* end;
};

const Picture kPictures[] = {
    {"animknob.png", zelvatoneAnimKnob, zelvatoneAnimKnobEnd},
    {"background.png", zelvatoneBackground, zelvatoneBackgroundEnd},
    {"help1.png", zelvatoneHelp1, zelvatoneHelp1End},
    {"help2.png", zelvatoneHelp2, zelvatoneHelp2End},
    {"help3.png", zelvatoneHelp3, zelvatoneHelp3End},
    {"help4.png", zelvatoneHelp4, zelvatoneHelp4End},
    {"help5.png", zelvatoneHelp5, zelvatoneHelp5End},
    {"helpoverlay.png", zelvatoneHelpOverlay, zelvatoneHelpOverlayEnd},
};

bool isSameLetter(char a, char b) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return lower(a) == lower(b);
}

} // namespace

std::span<const std::uint8_t> embeddedPicture(std::string_view name) {
    const auto* found = std::ranges::find_if(kPictures, [name](const Picture& picture) {
        return std::ranges::equal(picture.name, name, isSameLetter);
    });
    if (found == std::end(kPictures)) {
        return {};
    }
    return {found->begin, found->end};
}

} // namespace zelvatone
