// The editor: a child of the host's window, at the host's scale, never resized.
#include "clap/ClapPlugin.h"
#include "clap/EditorWindow.h"
#include "clap/PluginExtensions.h"

#include <string_view>

namespace zelvatone {

namespace {

ClapEditor& editorOf(const clap::Plugin* plugin) {
    return ClapPlugin::of(plugin).editor();
}

bool isApiSupported(const clap::Plugin* /*plugin*/, const char* api, bool isFloating) noexcept {
    return !isFloating && std::string_view(api) == windowApi();
}

bool preferredApi(const clap::Plugin* /*plugin*/, const char** api, bool* isFloating) noexcept {
    *api = windowApi();
    *isFloating = false;
    return true;
}

bool create(const clap::Plugin* plugin, const char* api, bool isFloating) noexcept {
    if (!isApiSupported(plugin, api, isFloating)) {
        return false;
    }
    editorOf(plugin).create();
    return true;
}

void destroy(const clap::Plugin* plugin) noexcept {
    editorOf(plugin).destroy();
}

bool setScale(const clap::Plugin* plugin, double scale) noexcept {
    return editorOf(plugin).isCreated() && editorOf(plugin).setScale(scale);
}

bool size(const clap::Plugin* plugin, std::uint32_t* width, std::uint32_t* height) noexcept {
    if (!editorOf(plugin).isCreated()) {
        return false;
    }
    const EditorPanel::Size size = editorOf(plugin).size();
    *width = static_cast<std::uint32_t>(size.width);
    *height = static_cast<std::uint32_t>(size.height);
    return true;
}

bool canResize(const clap::Plugin* /*plugin*/) noexcept {
    return false;
}

bool resizeHints(const clap::Plugin* /*plugin*/, clap::GuiResizeHints* /*hints*/) noexcept {
    return false;
}

bool setSize(const clap::Plugin* plugin, std::uint32_t width, std::uint32_t height) noexcept {
    std::uint32_t ownWidth = 0;
    std::uint32_t ownHeight = 0;
    return size(plugin, &ownWidth, &ownHeight) && width == ownWidth && height == ownHeight;
}

bool setParent(const clap::Plugin* plugin, const clap::Window* window) noexcept {
    return editorOf(plugin).isCreated() && std::string_view(window->api) == windowApi() &&
           editorOf(plugin).openIn(parentOf(*window));
}

bool setTransient(const clap::Plugin* /*plugin*/, const clap::Window* /*window*/) noexcept {
    return false;
}

void suggestTitle(const clap::Plugin* /*plugin*/, const char* /*title*/) noexcept {}

// The host shows and hides its own window, and the editor with it.
bool show(const clap::Plugin* plugin) noexcept {
    return editorOf(plugin).isCreated();
}

bool hide(const clap::Plugin* plugin) noexcept {
    return editorOf(plugin).isCreated();
}

void onTimer(const clap::Plugin* plugin, std::uint32_t timer) noexcept {
    editorOf(plugin).handleTimer(timer);
}

} // namespace

const clap::PluginGui kGuiExtension{.isApiSupported = isApiSupported,
                                    .getPreferredApi = preferredApi,
                                    .create = create,
                                    .destroy = destroy,
                                    .setScale = setScale,
                                    .getSize = size,
                                    .canResize = canResize,
                                    .getResizeHints = resizeHints,
                                    .adjustSize = size,
                                    .setSize = setSize,
                                    .setParent = setParent,
                                    .setTransient = setTransient,
                                    .suggestTitle = suggestTitle,
                                    .show = show,
                                    .hide = hide};

const clap::PluginTimerSupport kTimerExtension{.onTimer = onTimer};

} // namespace zelvatone
