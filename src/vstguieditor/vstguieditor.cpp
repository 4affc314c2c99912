#include "vstguieditor/vstguieditor.h"

#include "engine/SynthEngine.h"
#include "params/CheckedAccess.h"
#include "params/SharedValue.h"
#include "plugin/shell/VstInterface.h"
#include "vstguieditor/EditorAssert.h"
#include "vstguieditor/HelpButton.h"
#include "vstguieditor/QuillfeatherBadge.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

namespace zelvatone {

namespace {

using VSTGUI::CAnimKnob;
using VSTGUI::CColor;
using VSTGUI::CFrame;
using VSTGUI::CPoint;
using VSTGUI::CRect;
using VSTGUI::CTextLabel;

constexpr std::int32_t kKnobPictures = 30;
constexpr double kKnobPictureHeight = 48; // pixels

CRect rectOf(const WidgetRecord& record) {
    return {record.left, record.top, record.right, record.bottom};
}

CRect rectOf(const EditorArea& area) {
    return {CPoint(area.left, area.top), CPoint(area.width, area.height)};
}

bool isMissing(VSTGUI::CBitmap& picture) {
    return picture.getPlatformBitmap().get() == nullptr;
}

// Text alone, on whatever the background shows.
CTextLabel* makeText(const WidgetRecord& record, const char* text) {
    auto* label = new CTextLabel(rectOf(record), text, nullptr, 0);
    label->setTransparency(true);
    label->setBackColor(CColor(0, 0, 0, 0));
    label->setFrameColor(CColor(0, 0, 0, 0));
    return label;
}

} // namespace

VSTGuiEditor::VSTGuiEditor(VstInterface* plugin)
    : AEffGUIEditor(static_cast<AudioEffect*>(plugin)),
      plugin_(plugin),
      m_pSynthEngine(plugin->getSynthEngine()),
      font_(VSTGUI::makeOwned<VSTGUI::CFontDesc>("Arial", 12.0)) {
    std::printf("calling setEditor(this)\n");
    plugin->setEditor(this);
}

VSTGuiEditor::~VSTGuiEditor() {
    VSTGuiEditor::close();
}

bool VSTGuiEditor::getRect(ERect** ppErect) {
    const auto pixels = [this](double edge) {
        return static_cast<std::int16_t>(std::lround(edge * scale_));
    };
    rect_.top = pixels(editorRect_.top);
    rect_.left = pixels(editorRect_.left);
    rect_.bottom = pixels(editorRect_.bottom);
    rect_.right = pixels(editorRect_.right);
    *ppErect = &rect_;
    return true;
}

bool VSTGuiEditor::open(void* parent) {
    std::printf("opening editor\n");
    discardControls(); // of a host that opens twice
    AEffGUIEditor::open(parent);
    if (!toolkit_) {
        toolkit_.emplace();
    }
    m_pSynthEngine = plugin_->getSynthEngine();
    parameters_ = loadShared(m_pSynthEngine->currentProgram)->parameters;
    knobs_.assign(parameterCount(), nullptr);
    displays_.assign(parameterCount(), nullptr);
    labels_.assign(parameterCount(), nullptr);
    texts_ = std::vector<TextMailbox>(parameterCount());
    CFrame* newFrame = buildFrame();
    if (newFrame == nullptr) {
        return true;
    }
    frame = newFrame;
    gate_.open();
    showAllParameters();
    frame->addView(new QuillfeatherBadge(rectOf(kBadgeArea)));
    frame->addView(new HelpButton(rectOf(kHelpButtonArea), *this));
    if (!openFrame(*frame, parent)) {
        gate_.close();
        std::exchange(frame, nullptr)->forget(); // it has no window to close
        discardControls();
    }
    return true;
}

// The frame with the controls of the list, or null without their pictures.
CFrame* VSTGuiEditor::buildFrame() {
    const auto knobStrip = picture("animknob.png");
    const auto background = picture("background.png");
    if (isMissing(*knobStrip) || isMissing(*background)) {
        std::printf("Error: Zelv pixmaps not found on disk!\n");
        return nullptr;
    }
    auto* newFrame = new CFrame(editorRect_, this);
    if (scale_ != 1) {
        newFrame->setZoom(scale_);
    }
    // Never seen under the picture, and not to be overlooked without it.
    newFrame->setBackgroundColor(CColor(255, 0, 0, 255));
    newFrame->setBackground(background);
    for (const WidgetRecord& record : makeEditorLayout()) {
        if (std::string_view(record.kind) == "END") {
            break;
        }
        buildControl(record, *newFrame, knobStrip);
    }
    return newFrame;
}

void VSTGuiEditor::buildControl(const WidgetRecord& record, CFrame& newFrame,
                                VSTGUI::CBitmap* knobStrip) {
    const std::string_view kind = record.kind;
    if (kind == "CKnob") {
        auto* knob = new CAnimKnob(rectOf(record), this, record.parameter, kKnobPictures,
                                   kKnobPictureHeight, knobStrip, CPoint(0, 0));
        newFrame.addView(knob);
        checkedAt(knobs_, record.parameter) = knob;
    } else if (kind == "ParamDisplay") {
        auto* display = makeText(record, nullptr);
        newFrame.addView(display);
        checkedAt(displays_, record.parameter) = display;
    } else if (kind == "CTextLabel") {
        auto* label = makeText(record, checkedAt(parameters_, record.parameter)->name.c_str());
        newFrame.addView(label);
        checkedAt(labels_, record.parameter) = label;
    } else {
        std::printf("Error: Unknown VST widget type!\n");
    }
}

void VSTGuiEditor::showAllParameters() {
    ZELVATONE_EDITOR_ASSERT(m_pSynthEngine);
    const auto count = static_cast<VstInt32>(parameterCount());
    for (VstInt32 index = 0; index < count; ++index) {
        setParameter(index, plugin_->getParameter(index));
    }
    showPostedTexts();
}

void VSTGuiEditor::close() {
    discardControls();
    AEffGUIEditor::close();
}

void VSTGuiEditor::discardControls() {
    gate_.close();
    helpOverlay_ = nullptr;
    if (CFrame* closing = std::exchange(frame, nullptr)) {
        closing->close();
    }
    ZELVATONE_EDITOR_ASSERT(m_pSynthEngine);
    knobs_.clear();
    displays_.clear();
    labels_.clear();
    texts_.clear();
}

void VSTGuiEditor::idle() {
    runToolkitLoop();
    showPostedTexts();
    AEffGUIEditor::idle();
}

std::size_t VSTGuiEditor::parameterCount() const {
    return checkedAt(m_pSynthEngine->programs, 0).parameters.size();
}

void VSTGuiEditor::setParameter(VstInt32 index, float value) {
    const ControlGate::Pass pass(gate_);
    // A negative index becomes a huge one.
    if (!pass || static_cast<std::size_t>(index) >= parameterCount()) {
        return;
    }
    if (CAnimKnob* knob = checkedAt(knobs_, index)) {
        knob->setValue(value);
    }
    postText(index);
}

void VSTGuiEditor::valueChanged(VSTGUI::CControl* control) {
    const VstInt32 index = control->getTag();
    // Comes back through setParameter, before the value is stored: the text is still the old one.
    plugin_->setParameterAutomated(index, control->getValue());
    // The host, now told, may have closed the window, and the control is gone.
    if (frame != nullptr) {
        postText(index);
        showText(index);
    }
}

// Any thread, while the controls stay.
void VSTGuiEditor::postText(VstInt32 index) {
    if (checkedAt(displays_, index) != nullptr) {
        checkedAt(texts_, index)
            .post(checkedAt(loadShared(m_pSynthEngine->currentProgram)->parameters, index)
                      ->getDisplay());
    }
}

void VSTGuiEditor::showText(VstInt32 index) {
    std::string text;
    if (checkedAt(texts_, index).take(text)) {
        checkedAt(displays_, index)->setText(text.c_str());
    }
}

void VSTGuiEditor::showPostedTexts() {
    const auto count = static_cast<VstInt32>(texts_.size());
    for (VstInt32 index = 0; index < count; ++index) {
        showText(index);
    }
}

bool VSTGuiEditor::beforeSizeChange(const CRect& /*newSize*/, const CRect& /*oldSize*/) {
    return true;
}

void VSTGuiEditor::showHelp() {
    helpOverlay_ = new HelpOverlay(editorRect_, *this);
    frame->addView(helpOverlay_);
}

void VSTGuiEditor::closeHelp() {
    frame->removeView(std::exchange(helpOverlay_, nullptr), true);
    frame->invalid();
}

} // namespace zelvatone
