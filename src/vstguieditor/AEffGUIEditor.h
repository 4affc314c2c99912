// The glue between a toolkit's frame and a plug-in's editor.
#pragma once

#include "vstguieditor/Toolkit.h"

#include <cstdint>

namespace VSTGUI {

// An editor that shows a frame. A derived class makes the frame in `open`, keeps it in `frame`, and
// closes it in `close`. User-interface thread, except setParameter.
class AEffGUIEditor : public AEffEditor, public VSTGUIEditorInterface {
public:
    // `pEffect` must be the AudioEffect base of an AudioEffectX; registers this editor with it.
    explicit AEffGUIEditor(void* pEffect);

    void setParameter(VstInt32 index, float value) override;
    // Gives the address of `rect_`, which the derived class fills.
    bool getRect(ERect** ppErect) override;
    bool open(void* ptr) override;
    // Lets the frame handle what came in, and draw.
    void idle() override;
    bool onKeyDown(VstKeyCode& keyCode) override;
    bool onKeyUp(VstKeyCode& keyCode) override;
    bool onWheel(float distance) override;

    // Never called; ends the process.
    void doIdleStuff() override;

    AudioEffect* getEffect() { return effect; }
    // The toolkit's version: the major number in the upper half, the minor one in the lower.
    static std::int32_t getVstGuiVersion();

    // How the mouse turns a knob (CKnobMode), in all editors of this library.
    bool setKnobMode(std::int32_t val) override;
    std::int32_t getKnobMode() const override;

    // Asks the host for a window of the new size, if it can change its windows.
    bool beforeSizeChange(const CRect& newSize, const CRect& oldSize) override;

    // Tell the host where the user's gesture on parameter `index` begins and ends.
    void beginEdit(std::int32_t index) override;
    void endEdit(std::int32_t index) override;

protected:
    ERect rect_{};

private:
    AudioEffectX& effectX() const;

    static std::int32_t knobMode_;
};

} // namespace VSTGUI
