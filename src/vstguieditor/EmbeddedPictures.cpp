#include "vstguieditor/EmbeddedPictures.h"

#include "vstguieditor/PictureTable.h"

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

const EmbeddedFile kPictures[] = {
    {"animknob.png", zelvatoneAnimKnob, zelvatoneAnimKnobEnd},
    {"background.png", zelvatoneBackground, zelvatoneBackgroundEnd},
    {"help1.png", zelvatoneHelp1, zelvatoneHelp1End},
    {"help2.png", zelvatoneHelp2, zelvatoneHelp2End},
    {"help3.png", zelvatoneHelp3, zelvatoneHelp3End},
    {"help4.png", zelvatoneHelp4, zelvatoneHelp4End},
    {"help5.png", zelvatoneHelp5, zelvatoneHelp5End},
    {"helpoverlay.png", zelvatoneHelpOverlay, zelvatoneHelpOverlayEnd},
};

} // namespace

std::span<const std::uint8_t> embeddedPicture(std::string_view name) {
    return findPicture(kPictures, name);
}

} // namespace zelvatone
