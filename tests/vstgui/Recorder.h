// An editor and listener that writes down what it is told.
#pragma once

#include "vstgui/vstgui.h"

#include <chrono>
#include <string>
#include <vector>

namespace VSTGUI::test {

class Recorder : public VSTGUIEditorInterface, public IControlListener {
public:
    using Clock = std::chrono::steady_clock;

    std::int32_t getKnobMode() const override { return knobMode; }
    void beginEdit(std::int32_t tag) override { note("begin " + std::to_string(tag)); }
    void endEdit(std::int32_t tag) override {
        endedAt = Clock::now();
        note("end " + std::to_string(tag));
    }
    void valueChanged(CControl* control) override {
        values.push_back(control->getValue());
        note("value");
    }
    std::int32_t controlModifierClicked(CControl*, CButtonState) override {
        note("modifier");
        return swallowsModifiedPress ? 1 : 0;
    }
    void controlBeginEdit(CControl*) override { note("control begin"); }
    void controlEndEdit(CControl*) override { note("control end"); }

    // How often `entry` was noted.
    std::ptrdiff_t count(const std::string& entry) const {
        return std::count(log.begin(), log.end(), entry);
    }

    std::vector<std::string> log; // calls in their order
    std::vector<float> values;    // of the calls of valueChanged
    Clock::time_point endedAt;    // the last end
    std::int32_t knobMode = -1;
    bool swallowsModifiedPress = false;

private:
    void note(const std::string& entry) { log.push_back(entry); }
};

} // namespace VSTGUI::test
