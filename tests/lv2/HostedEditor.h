// The bundle's editor, and a host that writes down what the user does.
#pragma once

#include <lv2/ui/ui.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zelvatone::test {

// One editor in a host's window, from its opening on. Its library is loaded for it and goes with
// the last one, as in hosts.
class HostedEditor {
public:
    // In the X11 window `parent`; 0 for a host that has none. `scale` as the host asks for it, 0
    // for a host that does not. See isOpen.
    explicit HostedEditor(void* parent, float scale = 0);
    ~HostedEditor();
    HostedEditor(const HostedEditor&) = delete;
    HostedEditor& operator=(const HostedEditor&) = delete;

    bool isOpen() const { return editor_ != nullptr; }
    std::uint32_t window() const { return window_; }
    void idle();
    void sendValue(std::uint32_t port, float value, std::uint32_t protocol = 0);

    struct Size {
        int width = 0;
        int height = 0;
        bool operator==(const Size&) const = default;
    };
    Size askedSize; // what the editor has asked for
    // "touch 6", "value 6", "release 6", by port.
    std::vector<std::string> lines;
    std::vector<float> values;

private:
    void note(const char* what, std::uint32_t port);

    void* library_;
    const LV2UI_Descriptor* descriptor_;
    LV2UI_Handle editor_ = nullptr;
    std::uint32_t window_ = 0;
    LV2UI_Touch touch_;
    LV2UI_Resize resize_;
};

} // namespace zelvatone::test
