#include "vstguieditor/AEffGUIEditor.h"

#include "vstguieditor/EditorAssert.h"

namespace VSTGUI {

std::int32_t AEffGUIEditor::knobMode_ = kCircularMode;

AEffGUIEditor::AEffGUIEditor(void* pEffect) : AEffEditor(static_cast<AudioEffect*>(pEffect)) {
    effect->setEditor(this);
}

void AEffGUIEditor::setParameter(VstInt32 /*index*/, float /*value*/) {}

bool AEffGUIEditor::getRect(ERect** ppErect) {
    *ppErect = &rect_;
    return true;
}

bool AEffGUIEditor::open(void* ptr) {
    return AEffEditor::open(ptr);
}

void AEffGUIEditor::idle() {
    AEffEditor::idle();
    if (frame != nullptr) {
        frame->idle();
    }
}

bool AEffGUIEditor::onKeyDown(VstKeyCode& /*keyCode*/) {
    return false;
}

bool AEffGUIEditor::onKeyUp(VstKeyCode& /*keyCode*/) {
    return false;
}

bool AEffGUIEditor::onWheel(float /*distance*/) {
    return false;
}

void AEffGUIEditor::doIdleStuff() {
    constexpr bool kIsExpectedCall = false;
    ZELVATONE_EDITOR_ASSERT(kIsExpectedCall);
}

std::int32_t AEffGUIEditor::getVstGuiVersion() {
    return (VSTGUI_VERSION_MAJOR << 16) + VSTGUI_VERSION_MINOR;
}

bool AEffGUIEditor::setKnobMode(std::int32_t val) {
    knobMode_ = val;
    return true;
}

std::int32_t AEffGUIEditor::getKnobMode() const {
    return knobMode_;
}

bool AEffGUIEditor::beforeSizeChange(const CRect& newSize, const CRect& /*oldSize*/) {
    char capability[] = "sizeWindow"; // the interface takes it as changeable text
    if (!effectX().canHostDo(capability)) {
        return true;
    }
    return effectX().sizeWindow(static_cast<VstInt32>(newSize.getWidth()),
                                static_cast<VstInt32>(newSize.getHeight()));
}

void AEffGUIEditor::beginEdit(std::int32_t index) {
    effectX().beginEdit(index);
}

void AEffGUIEditor::endEdit(std::int32_t index) {
    effectX().endEdit(index);
}

AudioEffectX& AEffGUIEditor::effectX() const {
    return static_cast<AudioEffectX&>(*effect);
}

} // namespace VSTGUI
