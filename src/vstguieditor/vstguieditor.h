// The plug-in's window: knobs with their names and values over a painted face, the help, and the
// maker's mark.
#pragma once

#include "vstguieditor/AEffGUIEditor.h"
#include "vstguieditor/ControlGate.h"
#include "vstguieditor/EditorLayout.h"
#include "vstguieditor/EditorPlatform.h"
#include "vstguieditor/HelpOverlay.h"
#include "vstguieditor/TextMailbox.h"

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

    // For hosts that tell a scale: from its next opening on the window, with all in it, is `scale`
    // times as large. Takes the nearest scale that there is, see nearestEditorScale; 1 before the
    // first call. Never called for a host that has no scale: then its plug-in is linked without the
    // pictures of twice the size.
    void setScale(double scale);
    double getScale() const { return scale_; }
    // 717 x 477 pixels, times the scale and rounded.
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

    // The window is opened at its size: no host is asked to change it.
    bool beforeSizeChange(const VSTGUI::CRect& newSize, const VSTGUI::CRect& oldSize) override;

    // For the help's own controls, while the editor is open.
    void showHelp();
    void closeHelp();
    // The picture `name` for the scale that the window has.
    VSTGUI::SharedPointer<VSTGUI::CBitmap> picture(const char* name) const {
        return scale_ == 1 ? loadPicture(name) : loadLarger_(name);
    }

private:
    std::size_t parameterCount() const;
    VSTGUI::CFrame* buildFrame();
    void buildControl(const WidgetRecord& record, VSTGUI::CFrame& newFrame,
                      VSTGUI::CBitmap* knobStrip);
    void showAllParameters();
    void postText(VstInt32 index);
    void showText(VstInt32 index);
    void showPostedTexts();
    void discardControls();

    VstInterface* plugin_;
    // Set while no thread is inside `gate_`.
    SynthEngine* m_pSynthEngine;
    std::vector<SynthParameter*> parameters_; // of the program that was current at opening

    // By parameter index; null for one without such a control. Empty while closed.
    std::vector<VSTGUI::CAnimKnob*> knobs_;
    std::vector<VSTGUI::CTextLabel*> displays_;
    std::vector<VSTGUI::CTextLabel*> labels_;
    // Texts for the displays from any thread: a toolkit may not protect a label's text from a
    // change while it is drawn.
    std::vector<TextMailbox> texts_;
    ControlGate gate_; // open while these vectors and `frame` may be used by any thread

    VSTGUI::CRect editorRect_{0, 0, kEditorWidth, kEditorHeight}; // at scale 1
    double scale_ = 1;
    decltype(&loadPicture) loadLarger_ = &loadPicture; // for scales above 1
    std::optional<ToolkitUse> toolkit_;                // from the first opening on
    VSTGUI::SharedPointer<VSTGUI::CFontDesc> font_;
    HelpOverlay* helpOverlay_ = nullptr; // the frame's, while the help is shown
};

} // namespace zelvatone
