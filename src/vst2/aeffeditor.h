// Base of a plug-in's editor window, as the plug-in object forwards the host's requests to it.
#pragma once

#include "vst2/aeffectx.h"

class AudioEffect;

// All operations run on the host's user-interface thread, except setParameter.
class AEffEditor {
public:
    explicit AEffEditor(AudioEffect* effect = nullptr) : effect(effect) {}
    virtual ~AEffEditor() = default;
    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;

    // Tells the editor that parameter `index` is being set to the normalised `value`. Any thread
    // that sets a parameter.
    virtual void setParameter(VstInt32 /*index*/, float /*value*/) {}

    // Writes the address of the window's rectangle to `rect`; the editor keeps the record. Returns
    // false without one.
    virtual bool getRect(ERect** rect) {
        *rect = nullptr;
        return false;
    }
    // Opens the window inside `window`, the host's parent; true when it could.
    virtual bool open(void* window) {
        systemWindow = window;
        return false;
    }
    virtual void close() { systemWindow = nullptr; }
    virtual bool isOpen() { return systemWindow != nullptr; }
    virtual void idle() {}
    // A key of the host's; true when the editor used it.
    virtual bool onKeyDown(VstKeyCode& /*keyCode*/) { return false; }
    virtual bool onKeyUp(VstKeyCode& /*keyCode*/) { return false; }
    virtual bool onWheel(float /*distance*/) { return false; }
    // How a knob follows the mouse: 0 circular, 1 circular relative, 2 linear.
    virtual bool setKnobMode(VstInt32 /*mode*/) { return false; }

protected:
    AudioEffect* effect;
    void* systemWindow = nullptr;
};

// Says that this header has been included.
#ifndef __aeffeditor__
#define __aeffeditor__ // NOLINT(bugprone-reserved-identifier): the name that toolkits look for
#endif
