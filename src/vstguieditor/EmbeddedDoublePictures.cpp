#include "vstguieditor/EmbeddedPictures.h"

#include "vstguieditor/PictureTable.h"

EMBED_PICTURE(zelvatoneDoubleAnimKnob, "2x/ANIMKNOB.PNG")
EMBED_PICTURE(zelvatoneDoubleBackground, "2x/BACKGROUND.PNG")
EMBED_PICTURE(zelvatoneDoubleHelp1, "2x/HELP1.PNG")
EMBED_PICTURE(zelvatoneDoubleHelp2, "2x/HELP2.PNG")
EMBED_PICTURE(zelvatoneDoubleHelp3, "2x/HELP3.PNG")
EMBED_PICTURE(zelvatoneDoubleHelp4, "2x/HELP4.PNG")
EMBED_PICTURE(zelvatoneDoubleHelp5, "2x/HELP5.PNG")
EMBED_PICTURE(zelvatoneDoubleHelpOverlay, "2x/HELPOVERLAY.PNG")

namespace zelvatone {

namespace {

const EmbeddedFile kPictures[] = {
    {"animknob.png", zelvatoneDoubleAnimKnob, zelvatoneDoubleAnimKnobEnd},
    {"background.png", zelvatoneDoubleBackground, zelvatoneDoubleBackgroundEnd},
    {"help1.png", zelvatoneDoubleHelp1, zelvatoneDoubleHelp1End},
    {"help2.png", zelvatoneDoubleHelp2, zelvatoneDoubleHelp2End},
    {"help3.png", zelvatoneDoubleHelp3, zelvatoneDoubleHelp3End},
    {"help4.png", zelvatoneDoubleHelp4, zelvatoneDoubleHelp4End},
    {"help5.png", zelvatoneDoubleHelp5, zelvatoneDoubleHelp5End},
    {"helpoverlay.png", zelvatoneDoubleHelpOverlay, zelvatoneDoubleHelpOverlayEnd},
};

} // namespace

std::span<const std::uint8_t> embeddedDoublePicture(std::string_view name) {
    return findPicture(kPictures, name);
}

} // namespace zelvatone
