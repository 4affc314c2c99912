// The plug-in's window: knobs with their names and values over a painted face, the help, and the
// maker's mark.
#pragma once

#include "vstguieditor/AEffGUIEditor.h"
#include "vstguieditor/ControlGate.h"
#include "vstguieditor/EditorLayout.h"
#include "vstguieditor/EditorPlatform.h"
#include "vstguieditor/HelpOverlay.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace zelvatone {

class SynthEngine;
class SynthParameter;
class VstInterface;

// Has a frame and controls while it is open. User-interface thread, except setParameter.
class VSTGuiEditor final : public VSTGUI::AEffGUIEditor, public VSTGUI::IControlListener {
public:
    // Registers itself with `plugin`, which owns it and outlives its windows.
    explicit VSTGuiEditor(VstInterface* plugin);
    ~VSTGuiEditor() override;
    VSTGuiEditor(const VSTGuiEditor&) = delete;
    VSTGuiEditor& operator=(const VSTGuiEditor&) = delete;

    // 717 x 477 pixels.
    bool getRect(ERect** ppErect) override;
    // Shows the controls in the host's window `parent`. Returns true in any case: without pictures,
    // or when that window is gone, the host's window stays empty.
    bool open(void* parent) override;
    void close() override;
    void idle() override;

    // Moves the knob to the normalised `value` and shows the text that the parameter has now. Does
    // nothing while the editor is closed or without such a parameter. Any thread, without lock.
    void setParameter(VstInt32 index, float value) override;
    // The user has turned a knob: sets the parameter, tells the host, shows the new text.
    void valueChanged(VSTGUI::CControl* control) override;

    // For the help's own controls, while the editor is open.
    void showHelp();
    void closeHelp();

private:
    std::size_t parameterCount() const;
    VSTGUI::CFrame* buildFrame();
    void buildControl(const WidgetRecord& record, VSTGUI::CFrame& newFrame,
                      VSTGUI::CBitmap* knobStrip);
    void showAllParameters();
    void showText(VstInt32 index);
    void discardControls();

    VstInterface* plugin_;
    // Set while no thread is inside `gate_`.
    SynthEngine* m_pSynthEngine;
    std::vector<SynthParameter*> parameters_; // of the program that was current at opening

    // By parameter index; null for one without such a control. Empty while closed.
    std::vector<VSTGUI::CAnimKnob*> knobs_;
    std::vector<VSTGUI::CTextLabel*> displays_;
    std::vector<VSTGUI::CTextLabel*> labels_;
    ControlGate gate_; // open while these vectors and `frame` may be used by any thread

    VSTGUI::CRect editorRect_{0, 0, kEditorWidth, kEditorHeight};
    std::optional<ToolkitUse> toolkit_; // from the first opening on
    VSTGUI::SharedPointer<VSTGUI::CFontDesc> font_;
    HelpOverlay* helpOverlay_ = nullptr; // the frame's, while the help is shown
};

} // namespace zelvatone
