#include "tests/lv2/HostedEditor.h"

#include "lv2/Identity.h"
#include "tests/lv2/Urids.h"

#include <lv2/atom/atom.h>
#include <lv2/options/options.h>

#include <dlfcn.h>

#include <array>
#include <stdexcept>

namespace zelvatone::test {
namespace {

void* loadEditor() {
    void* library = dlopen(ZELVATONE_LV2_BUNDLE "/zelvatone_editor.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return library;
}

const LV2UI_Descriptor* descriptorIn(void* library) {
    return reinterpret_cast<LV2UI_DescriptorFunction>(dlsym(library, "lv2ui_descriptor"))(0);
}

HostedEditor& hostOf(void* handle) {
    return *static_cast<HostedEditor*>(handle);
}

} // namespace

HostedEditor::HostedEditor(void* parent, float scale)
    : library_(loadEditor()),
      descriptor_(descriptorIn(library_)),
      touch_{this, [](LV2UI_Feature_Handle self, std::uint32_t port,
                      bool isHeld) { hostOf(self).note(isHeld ? "touch" : "release", port); }},
      resize_{this, [](LV2UI_Feature_Handle self, int width, int height) {
                  hostOf(self).askedSize = {.width = width, .height = height};
                  return 0;
              }} {
    const std::array<LV2_Options_Option, 2> options{
        {{LV2_OPTIONS_INSTANCE, 0, Urids::get().map(LV2_UI__scaleFactor), sizeof(scale),
          Urids::get().map(LV2_ATOM__Float), &scale},
         {}}};
    const LV2_Feature map{LV2_URID__map, Urids::get().mapper()};
    const LV2_Feature touch{LV2_UI__touch, &touch_};
    const LV2_Feature resize{LV2_UI__resize, &resize_};
    const LV2_Feature parentFeature{LV2_UI__parent, parent};
    const LV2_Feature scaling{LV2_OPTIONS__options,
                              const_cast<LV2_Options_Option*>(options.data())};
    std::vector<const LV2_Feature*> features{&map, &touch, &resize};
    if (parent != nullptr) {
        features.push_back(&parentFeature);
    }
    if (scale != 0) {
        features.push_back(&scaling);
    }
    features.push_back(nullptr);
    LV2UI_Widget widget = nullptr;
    editor_ = descriptor_->instantiate(
        descriptor_, lv2::kPluginUri, ZELVATONE_LV2_BUNDLE "/",
        [](LV2UI_Controller self, std::uint32_t port, std::uint32_t, std::uint32_t,
           const void* value) {
            hostOf(self).note("value", port);
            hostOf(self).values.push_back(*static_cast<const float*>(value));
        },
        this, &widget, features.data());
    window_ = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(widget));
}

HostedEditor::~HostedEditor() {
    if (isOpen()) {
        descriptor_->cleanup(editor_);
    }
    dlclose(library_);
}

void HostedEditor::idle() {
    const auto* idle = static_cast<const LV2UI_Idle_Interface*>(
        descriptor_->extension_data(LV2_UI__idleInterface));
    idle->idle(editor_);
}

void HostedEditor::sendValue(std::uint32_t port, float value, std::uint32_t protocol) {
    descriptor_->port_event(editor_, port, sizeof(value), protocol, &value);
}

void HostedEditor::note(const char* what, std::uint32_t port) {
    lines.push_back(std::string(what) + ' ' + std::to_string(port));
}

} // namespace zelvatone::test
