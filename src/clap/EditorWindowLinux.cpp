#include "clap/EditorWindow.h"

namespace zelvatone {

const char* windowApi() {
    return clap::kWindowX11;
}

// A number is what the editor's interface takes for a pointer there.
void* parentOf(const clap::Window& window) {
    return reinterpret_cast<void*>(window.x11);
}

} // namespace zelvatone
