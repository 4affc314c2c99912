// In a file of its own: a library that never calls this is linked without the editor's larger
// pictures.
#include "plugin/VSTGuiVSTInterface.h"
#include "vstguieditor/vstguieditor.h"

namespace zelvatone {

void VSTGuiVSTInterface::setEditorScale(double scale) {
    if (editor != nullptr) {
        static_cast<VSTGuiEditor*>(editor)->setScale(scale);
    }
}

} // namespace zelvatone
