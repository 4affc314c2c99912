#include "lv2/ui/EditorUi.h"

#include "formats/ParameterUnits.h"
#include "lv2/Identity.h"

#include <cmath>

namespace zelvatone::lv2 {

EditorUi::EditorUi(const EditorHost& host) : host_(host), panel_(*this) {
    panel_.setScale(static_cast<double>(host_.scale));
    const EditorPanel::Size size = panel_.size();
    window_.emplace(static_cast<xcb_window_t>(host_.parent), size.width, size.height);
    // The toolkit takes the number of a window as a pointer.
    panel_.open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(window())));
    if (host_.resize != nullptr) {
        host_.resize->ui_resize(host_.resize->handle, size.width, size.height);
    }
}

EditorUi::~EditorUi() {
    panel_.close();
}

void EditorUi::show(std::uint32_t port, float value) {
    if (port < kFirstParameterPort || port >= kPortCount || std::isnan(value)) {
        return;
    }
    const auto index = static_cast<ParameterIndex>(port - kFirstParameterPort);
    // As the sound takes it.
    panel_.show(index, nearestValue(parameterUnits()[index], static_cast<double>(value)));
}

void EditorUi::valueEdited(ParameterIndex index, float value) {
    constexpr std::uint32_t kFloatProtocol = 0;
    host_.write(host_.controller, portOf(index), sizeof(value), kFloatProtocol, &value);
}

void EditorUi::touch(ParameterIndex index, bool isHeld) const {
    if (host_.touch != nullptr) {
        host_.touch->touch(host_.touch->handle, portOf(index), isHeld);
    }
}

} // namespace zelvatone::lv2
