#include "host/plugin/PluginEditor.h"

#include "host/Error.h"
#include "host/text/Format.h"

namespace zelvatone {

PluginEditor::PluginEditor(HostedPlugin& plugin) : plugin_(plugin) {
    if ((plugin.record().flags & effFlagsHasEditor) == 0) {
        throw InputError(plugin.path() + " has no editor");
    }
}

PluginEditor::~PluginEditor() {
    if (isOpen_) {
        plugin_.request(effEditClose);
    }
}

WindowSize PluginEditor::size() {
    // The protocol of windows counts in 16 bits, and places reach into the negative half.
    constexpr int kLargest = 32767;
    ERect* rectangle = nullptr;
    plugin_.request(effEditGetRect, 0, 0, static_cast<void*>(&rectangle));
    if (rectangle == nullptr) {
        throw InputError(plugin_.path() + " does not say how large its editor is");
    }
    const WindowSize size{rectangle->right - rectangle->left, rectangle->bottom - rectangle->top};
    if (size.width <= 0 || size.height <= 0 || size.width > kLargest || size.height > kLargest) {
        throw InputError(formatText("{} has an editor of {} x {} pixels", plugin_.path(),
                                    size.width, size.height));
    }
    return size;
}

void PluginEditor::open(EditorWindow& window) {
    if (plugin_.request(effEditOpen, 0, 0, window.handle()) == 0) {
        throw InputError(plugin_.path() + " does not open its editor");
    }
    isOpen_ = true;
    window.resize(size());
}

void PluginEditor::idle() {
    plugin_.request(effEditIdle);
}

} // namespace zelvatone
