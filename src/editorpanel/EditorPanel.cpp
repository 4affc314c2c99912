#include "editorpanel/EditorPanel.h"

#include "editorpanel/ShadowEngine.h"
#include "params/CheckedAccess.h"
#include "plugin/VSTGuiVSTInterface.h"
#include "vst2/aeffeditor.h"

#include <utility>

namespace zelvatone {

namespace {

constexpr VstIntPtr kInterfaceVersion = 2400;
constexpr VstInt32 kNoId = 0; // the panel keeps no sessions by it

} // namespace

EditorPanel::EditorPanel(EditorListener& listener)
    : listener_(listener),
      values_(std::make_unique<ShadowEngine>()),
      plugin_(std::make_unique<VSTGuiVSTInterface>(callHost, values_.get(), kNoId)) {
    plugin_->getAeffect()->user = this;
}

EditorPanel::~EditorPanel() {
    close();
}

// What the editor asks of its host.
VstIntPtr EditorPanel::callHost(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                VstIntPtr /*value*/, void* /*ptr*/, float /*opt*/) {
    if (opcode == audioMasterVersion) {
        return kInterfaceVersion;
    }
    // Null until the constructor has set it.
    auto* panel = effect == nullptr ? nullptr : static_cast<EditorPanel*>(effect->user);
    if (panel == nullptr || index < 0 || index >= kParameterCount) {
        return 0;
    }
    return panel->handleEditorCall(opcode, static_cast<ParameterIndex>(index));
}

VstIntPtr EditorPanel::handleEditorCall(VstInt32 opcode, ParameterIndex index) {
    switch (opcode) {
    case audioMasterAutomate: // stored already, in units
        checkedAt(grasps_, index).hasMissed = false;
        listener_.valueEdited(index, values_->parameter(index).value);
        return 1;
    case audioMasterBeginEdit:
        checkedAt(grasps_, index) = {.isHeld = true, .hasMissed = false, .missed = 0.0F};
        listener_.editBegins(index);
        return 1;
    case audioMasterEndEdit:
        endEdit(index);
        return 1;
    default:
        return 0;
    }
}

void EditorPanel::endEdit(ParameterIndex index) {
    const Grasp grasp = std::exchange(checkedAt(grasps_, index), Grasp());
    listener_.editEnds(index);
    if (grasp.hasMissed) {
        store(index, grasp.missed);
    }
}

void EditorPanel::setScale(double scale) {
    plugin_->setEditorScale(scale);
}

EditorPanel::Size EditorPanel::size() const {
    ERect* rect = nullptr;
    plugin_->getEditor()->getRect(&rect);
    if (rect == nullptr) {
        return {.width = 0, .height = 0};
    }
    return {.width = rect->right - rect->left, .height = rect->bottom - rect->top};
}

void EditorPanel::open(void* parent) {
    close();
    plugin_->getEditor()->open(parent);
    isOpen_ = true;
}

void EditorPanel::close() {
    if (std::exchange(isOpen_, false)) {
        plugin_->getEditor()->close();
        // A knob that was held when its window went is let go.
        for (std::int32_t index = 0; index < kParameterCount; ++index) {
            if (checkedAt(grasps_, index).isHeld) {
                endEdit(static_cast<ParameterIndex>(index));
            }
        }
    }
}

void EditorPanel::idle() {
    if (isOpen_) {
        plugin_->getEditor()->idle();
    }
}

void EditorPanel::show(ParameterIndex index, float value) {
    Grasp& grasp = checkedAt(grasps_, index);
    if (grasp.isHeld) {
        grasp.hasMissed = value != values_->parameter(index).value;
        grasp.missed = value;
    } else if (value != values_->parameter(index).value) {
        store(index, value);
    }
}

void EditorPanel::store(ParameterIndex index, float value) {
    values_->parameter(index).setValue(value);
    plugin_->getEditor()->setParameter(index, plugin_->getParameter(index));
}

} // namespace zelvatone
