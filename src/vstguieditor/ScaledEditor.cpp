// In a file of its own: a plug-in that never calls this is linked without the pictures of twice the
// size.
#include "vstguieditor/EditorScale.h"
#include "vstguieditor/vstguieditor.h"

namespace zelvatone {

void VSTGuiEditor::setScale(double scale) {
    scale_ = nearestEditorScale(scale);
    loadLarger_ = &loadDoublePicture;
}

} // namespace zelvatone
