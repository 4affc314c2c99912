// A view with a value.
#pragma once

#include "vstgui/lib/controls/icontrollistener.h"
#include "vstgui/lib/cview.h"

#include <atomic>
#include <cstdint>

namespace VSTGUI {

// User-interface thread, except setValue and getValue: any thread, without lock or allocation.
class CControl : public CView {
public:
    // `listener` and `background` may be null. The range is 0 to 1, the default value 0.5.
    explicit CControl(const CRect& size, IControlListener* listener = nullptr, std::int32_t tag = 0,
                      CBitmap* background = nullptr);

    // Brought into the range; not a number (NaN) becomes its lower end. The listener is not told;
    // shown from the next idle on. Any thread.
    virtual void setValue(float newValue);
    virtual float getValue() const { return value.load(std::memory_order_relaxed); }
    // As a fraction of the range. Any thread.
    void setValueNormalized(float fraction);
    float getValueNormalized() const;
    // The value when the control was last asked to be drawn.
    float getOldValue() const { return shownValue; }

    // The range is set before other threads know the control.
    void setMin(float newMin) { minimum = newMin; }
    float getMin() const { return minimum; }
    void setMax(float newMax) { maximum = newMax; }
    float getMax() const { return maximum; }
    // What a press with Ctrl sets.
    void setDefaultValue(float newDefault) { defaultValue = newDefault; }
    float getDefaultValue() const { return defaultValue; }

    void setTag(std::int32_t newTag) { tag = newTag; }
    std::int32_t getTag() const { return tag; }
    void setListener(IControlListener* newListener) { listener = newListener; }
    IControlListener* getListener() const { return listener; }

    // A control is dirty when it was marked, or when its value differs from the one last shown.
    bool isDirty() const override;
    void setDirty(bool state = true) override;

    // Tells the listener of the value that the user set.
    virtual void valueChanged();
    // Around a gesture of the user's; they nest, and only the outermost pair is told: to the
    // listener and, by the frame, to the host. A control without a listener is bound to no
    // parameter and reports nothing.
    virtual void beginEdit();
    virtual void endEdit();
    bool isEditing() const { return openEdits > 0; }

    // Takes a press with modifier keys before the control itself sees it: asks the listener, then
    // lets Ctrl and left alone set the default value. Returns whether the press is used up.
    bool takeModifiedPress(const CButtonState& buttons);

    // Ends an open gesture when the frame is left.
    void setFrame(CFrame* newFrame) override;

protected:
    ~CControl() override = default;

    // The value to draw, as a fraction of the range; for draw(). When another thread has changed it
    // since the control was made clean, the next idle draws it again: it may change back meanwhile,
    // and nothing else would tell that something else was drawn.
    float fractionToDraw();

private:
    void takeDefaultValue();

    IControlListener* listener;
    std::int32_t tag;
    float minimum = 0.F;
    float maximum = 1.F;
    float defaultValue = 0.5F;
    std::atomic<float> value = 0.F;
    float shownValue = 0.F; // the value when the view was last made clean
    std::int32_t openEdits = 0;
};

} // namespace VSTGUI
