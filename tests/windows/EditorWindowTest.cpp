// The editor's window on Windows, through openings and closings.
#include "tests/windows/EditorFixture.h"

#include <gmock/gmock.h>
#include <winternl.h>

#include <filesystem>
#include <memory>

namespace zelvatone::test {
namespace {

// Objects of GDI that the process holds. Wine does not count them; there the table is read that
// every process has of them, as Wine lays it out: 24 bytes an entry, its kind at byte 14.
DWORD countGdiObjects() {
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); count != 0) {
        return count;
    }
    constexpr std::size_t kEntries = 0x4000, kEntryBytes = 24, kKind = 14;
    constexpr std::size_t kTableInBlock = 0xF8; // of the process's block
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                              sizeof process, nullptr);
    const auto* block = reinterpret_cast<const char*>(process.PebBaseAddress);
    const auto* table = *reinterpret_cast<const char* const*>(block + kTableInBlock);
    DWORD count = 0;
    for (std::size_t i = 0; i < kEntries; ++i) {
        count += table[i * kEntryBytes + kKind] != 0 ? 1 : 0;
    }
    return count;
}

DWORD countKernelObjects() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

std::wstring classOf(HWND window) {
    wchar_t name[256];
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 256))};
}

using WindowsEditorWindow = WindowsEditor;

TEST_F(WindowsEditorWindow, IsAChildThatFillsTheHosts) {
    ASSERT_EQ(window.children(), 1);
    HWND editor = window.editor();
    EXPECT_NE(GetWindowLongPtrW(editor, GWL_STYLE) & WS_CHILD, 0);
    EXPECT_NE(IsWindowVisible(editor), FALSE);
    RECT rect{};
    GetClientRect(editor, &rect);
    EXPECT_EQ(rect.right, 717);
    EXPECT_EQ(rect.bottom, 477);
    POINT corner{};
    MapWindowPoints(editor, window.handle(), &corner, 1);
    EXPECT_EQ(corner.x, 0);
    EXPECT_EQ(corner.y, 0);
}

TEST_F(WindowsEditorWindow, FollowsTheHostsAutomation) {
    const WindowPicture before = window.picture();
    plugin.setParameter(kSustain, 0.0F);
    idle();
    const WindowPicture after = window.picture();
    int changed = 0;
    for (int y = 0; y < after.height; ++y) {
        for (int x = 0; x < after.width; ++x) {
            if (before.at(x, y) != after.at(x, y)) {
                ++changed;
                // The knob, or the text below it.
                EXPECT_TRUE(x >= 408 && x < 496 && y >= 397 && y < 465) << x << ", " << y;
            }
        }
    }
    EXPECT_GT(changed, 100);
}

TEST_F(WindowsEditorWindow, DrawsAnewWhatAnotherWindowHasCovered) {
    const WindowPicture before = window.picture();
    {
        const HostWindow other;
        idle();
    }
    InvalidateRect(window.editor(), nullptr, TRUE);
    idle();
    EXPECT_TRUE(window.picture().pixels == before.pixels);
}

TEST_F(WindowsEditorWindow, IsGoneWhenTheEditorIsClosed) {
    HWND editor = window.editor();
    plugin.ask(effEditClose);
    EXPECT_EQ(IsWindow(editor), FALSE);
    EXPECT_EQ(window.children(), 0);
    plugin.ask(effEditIdle);
}

TEST_F(WindowsEditorWindow, LeavesNothingBehindWhenItOpensAHundredTimes) {
    for (int round = 0; round < 5; ++round) { // fills the caches of the libraries below
        open();
        plugin.ask(effEditClose);
    }
    const DWORD gdiObjects = countGdiObjects();
    const DWORD kernelObjects = countKernelObjects();
    for (int round = 0; round < 100; ++round) {
        open();
        plugin.ask(effEditClose);
        HostWindow::pump();
    }
    EXPECT_EQ(countGdiObjects(), gdiObjects);
    EXPECT_EQ(countKernelObjects(), kernelObjects);
    EXPECT_EQ(window.children(), 0);
}

TEST(WindowsEditorCount, SeesAnObjectThatIsLeftBehind) {
    const DWORD before = countGdiObjects();
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_EQ(countGdiObjects(), before + 1);
    DeleteObject(brush);
    EXPECT_EQ(countGdiObjects(), before);
}

TEST_F(WindowsEditorWindow, OpensNothingInAWindowThatIsGone) {
    plugin.ask(effEditClose);
    DestroyWindow(window.handle());
    EXPECT_EQ(plugin.ask(effEditOpen, 0, 0, window.handle()), 1);
    plugin.ask(effEditIdle);
}

TEST_F(WindowsEditorWindow, IsOneOfManyInAProcess) {
    std::vector<std::unique_ptr<LoadedPlugin>> plugins;
    std::vector<std::unique_ptr<HostWindow>> windows;
    for (int i = 0; i < 5; ++i) {
        plugins.push_back(std::make_unique<LoadedPlugin>());
        windows.push_back(std::make_unique<HostWindow>());
        plugins.back()->ask(effEditOpen, 0, 0, windows.back()->handle());
    }
    plugins[2]->setParameter(kSustain, 0.0F);
    for (const auto& each : plugins) {
        each->ask(effEditIdle);
        HostWindow::pump();
    }
    EXPECT_TRUE(windows[0]->picture().pixels == windows[4]->picture().pixels);
    EXPECT_FALSE(windows[2]->picture().pixels == windows[4]->picture().pixels);
    for (const auto& each : plugins) {
        each->ask(effEditClose);
    }
}

// The same library under another name: a second module of the process.
class OtherModule {
public:
    OtherModule()
        : file(std::filesystem::temp_directory_path() / "zelvatone-copy.dll"),
          library((std::filesystem::copy_file(PluginLibrary::path(), file,
                                              std::filesystem::copy_options::overwrite_existing),
                   LoadLibraryW(file.c_str()))) {}
    ~OtherModule() {
        unload();
        std::filesystem::remove(file);
    }
    OtherModule(const OtherModule&) = delete;
    OtherModule& operator=(const OtherModule&) = delete;

    AEffect* create() const {
        const FARPROC entry = GetProcAddress(library, "VSTPluginMain");
        return reinterpret_cast<PluginLibrary::Entry>(reinterpret_cast<void*>(entry))(
            RecordingHost::callback);
    }
    HMODULE handle() const { return library; }
    void unload() {
        if (library != nullptr) {
            FreeLibrary(std::exchange(library, nullptr));
        }
    }

private:
    std::filesystem::path file;
    HMODULE library;
};

TEST_F(WindowsEditorWindow, HasAnotherClassAndTheSamePicturesInAnotherModule) {
    const OtherModule module;
    const HostedEffect other(module.create());
    const HostWindow otherWindow;
    other.ask(effEditOpen, 0, 0, otherWindow.handle());
    other.ask(effEditIdle);
    HostWindow::pump();
    EXPECT_NE(classOf(otherWindow.editor()), classOf(window.editor()));
    EXPECT_TRUE(otherWindow.picture().pixels == window.picture().pixels);
    other.ask(effClose);
    idle();
    EXPECT_EQ(window.children(), 1);
}

TEST_F(WindowsEditorWindow, OpensAgainAfterTheModuleWasUnloaded) {
    for (int round = 0; round < 3; ++round) {
        OtherModule module;
        const HostedEffect other(module.create());
        const HostWindow otherWindow;
        other.ask(effEditOpen, 0, 0, otherWindow.handle());
        other.ask(effEditIdle);
        HostWindow::pump();
        EXPECT_TRUE(otherWindow.picture().pixels == window.picture().pixels);
        const std::wstring name = classOf(otherWindow.editor());
        WNDCLASSW description{};
        EXPECT_NE(GetClassInfoW(module.handle(), name.c_str(), &description), FALSE);
        other.ask(effEditClose);
        other.ask(effClose);
        EXPECT_EQ(GetClassInfoW(module.handle(), name.c_str(), &description), FALSE);
        module.unload();
    }
}

} // namespace
} // namespace zelvatone::test
