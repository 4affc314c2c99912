// The one function that a host finds in the library, and the C functions that it leads to.
#include "lv2/Features.h"
#include "lv2/Identity.h"
#include "lv2/ui/EditorUi.h"

#include <lv2/atom/atom.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <exception>
#include <string_view>

namespace zelvatone::lv2 {

namespace {

// The scale that the host asks for, 1 if it asks for none: nothing is guessed from the desktop.
float scaleIn(const LV2_Feature* const* features) {
    const auto* map = featureOf<const LV2_URID_Map>(features, LV2_URID__map);
    const auto* option = featureOf<const LV2_Options_Option>(features, LV2_OPTIONS__options);
    if (map == nullptr || option == nullptr) {
        return 1;
    }
    const LV2_URID scale = map->map(map->handle, LV2_UI__scaleFactor);
    const LV2_URID number = map->map(map->handle, LV2_ATOM__Float);
    for (; option->key != 0; ++option) { // the list ends with zeros
        if (option->key == scale && option->type == number && option->value != nullptr) {
            return *static_cast<const float*>(option->value);
        }
    }
    return 1;
}

// Null for a host without a window for the editor.
LV2UI_Handle instantiate(const LV2UI_Descriptor* /*descriptor*/, const char* /*plugin*/,
                         const char* /*bundle*/, LV2UI_Write_Function write,
                         LV2UI_Controller controller, LV2UI_Widget* widget,
                         const LV2_Feature* const* features) {
    const EditorHost host{
        .write = write,
        .controller = controller,
        // The pointer is the number.
        .parent = reinterpret_cast<std::uintptr_t>(featureOf<void>(features, LV2_UI__parent)),
        .touch = featureOf<const LV2UI_Touch>(features, LV2_UI__touch),
        .resize = featureOf<const LV2UI_Resize>(features, LV2_UI__resize),
        .scale = scaleIn(features)};
    if (host.parent == 0) {
        return nullptr;
    }
    try {
        auto* editor = new EditorUi(host);
        *widget = reinterpret_cast<LV2UI_Widget>(static_cast<std::uintptr_t>(editor->window()));
        return editor;
    } catch (const std::exception&) { // a host in C would not survive it
        return nullptr;
    }
}

// noexcept as the sound's: an exception must not unwind into the host.
void cleanUp(LV2UI_Handle editor) noexcept {
    delete static_cast<EditorUi*>(editor);
}

void portEvent(LV2UI_Handle editor, std::uint32_t port, std::uint32_t size, std::uint32_t protocol,
               const void* value) noexcept {
    if (protocol == 0 && size == sizeof(float)) {
        static_cast<EditorUi*>(editor)->show(port, *static_cast<const float*>(value));
    }
}

// Not 0 would end the editor.
int idle(LV2UI_Handle editor) noexcept {
    static_cast<EditorUi*>(editor)->idle();
    return 0;
}

const void* extensionData(const char* uri) {
    static const LV2UI_Idle_Interface kIdle{idle};
    return std::string_view(uri) == LV2_UI__idleInterface ? &kIdle : nullptr;
}

} // namespace

} // namespace zelvatone::lv2

LV2_SYMBOL_EXPORT const LV2UI_Descriptor* lv2ui_descriptor(std::uint32_t index) {
    namespace lv2 = zelvatone::lv2;
    static const LV2UI_Descriptor kDescriptor{lv2::kEditorUri, lv2::instantiate, lv2::cleanUp,
                                              lv2::portEvent, lv2::extensionData};
    return index == 0 ? &kDescriptor : nullptr;
}
