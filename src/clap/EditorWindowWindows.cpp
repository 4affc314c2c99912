#include "clap/EditorWindow.h"

namespace zelvatone {

const char* windowApi() {
    return clap::kWindowWin32;
}

void* parentOf(const clap::Window& window) {
    return window.pointer;
}

} // namespace zelvatone
