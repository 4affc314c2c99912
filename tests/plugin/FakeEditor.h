// An editor without a window, which writes down what reaches it.
#pragma once

#include "vst2/aeffeditor.h"
#include "vst2/audioeffect.h"

#include <cstdio>
#include <string>
#include <vector>

class FakeEditor : public AEffEditor {
public:
    // `journal` outlives the editor and learns of its end.
    FakeEditor(AudioEffect* effect, std::vector<std::string>& journal)
        : AEffEditor(effect), journal(journal) {}
    ~FakeEditor() override { journal.emplace_back("deleted"); }

    void setParameter(VstInt32 index, float value) override {
        told.push_back({index, value});
        pluginHad.push_back(effect->getParameter(index));
        journal.emplace_back("set");
    }
    bool getRect(ERect** rect) override {
        *rect = &window;
        return result;
    }
    bool open(void* parent) override {
        openedIn = parent;
        journal.emplace_back("open");
        return result;
    }
    void close() override { journal.emplace_back("close"); }
    void idle() override { journal.emplace_back("idle"); }
    bool onKeyDown(VstKeyCode& keyCode) override {
        key = keyCode;
        journal.emplace_back("down");
        return result;
    }
    bool onKeyUp(VstKeyCode& keyCode) override {
        key = keyCode;
        journal.emplace_back("up");
        return result;
    }
    bool setKnobMode(VstInt32 mode) override {
        journal.push_back("knob mode " + std::to_string(mode));
        return result;
    }

    struct Told {
        VstInt32 index;
        float value;
    };
    std::vector<Told> told;       // by setParameter
    std::vector<float> pluginHad; // the plug-in's value at each of these
    bool result = true;
    ERect window{0, 0, 477, 717};
    void* openedIn = nullptr;
    VstKeyCode key{};

private:
    std::vector<std::string>& journal;
};
