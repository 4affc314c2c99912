#include "vstguieditor/EditorPlatform.h"

#include "vstgui/lib/vstguiinit.h"

#include <windows.h>

#include <ole2.h>

#include <string>

namespace zelvatone {

namespace {

int users = 0;
// Toolkits read their pictures through COM, which a thread has to start before. A host that has
// started it in another way keeps that.
bool hasStartedCom = false;

// The library that this code is in, which carries the pictures; not the program that loaded it.
HMODULE ownModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&users), &module);
    return module;
}

} // namespace

ToolkitUse::ToolkitUse() {
    if (users++ == 0) {
        hasStartedCom = SUCCEEDED(OleInitialize(nullptr));
        VSTGUI::init(ownModule());
    }
}

ToolkitUse::~ToolkitUse() {
    if (--users == 0) {
        VSTGUI::exit();
        if (hasStartedCom) {
            OleUninitialize();
        }
    }
}

bool openFrame(VSTGUI::CFrame& frame, void* parent) {
    return frame.open(parent, VSTGUI::PlatformType::kHWND);
}

// The host's loop brings the messages of all windows of its thread.
void runToolkitLoop() {}

VSTGUI::SharedPointer<VSTGUI::CBitmap> loadPicture(const char* name) {
    return VSTGUI::makeOwned<VSTGUI::CBitmap>(name);
}

// The resources of that size are called DOUBLE-ANIMKNOB.PNG and so on.
VSTGUI::SharedPointer<VSTGUI::CBitmap> loadDoublePicture(const char* name) {
    const std::string resource = std::string("double-") + name;
    auto picture = VSTGUI::makeOwned<VSTGUI::CBitmap>(resource.c_str());
    if (!picture->isLoaded()) {
        return loadPicture(name);
    }
    picture->getPlatformBitmap()->setScaleFactor(2);
    return picture;
}

} // namespace zelvatone
