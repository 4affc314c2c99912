// The badge leads to the maker's web page, by way of the user's browser. Wine's is a script here,
// which writes down what it is asked for.
#include "tests/windows/EditorFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace zelvatone::test {
namespace {

namespace fs = std::filesystem;

constexpr int kBadgeX = 646, kBadgeY = 15;
const fs::path kSeen = ZELVATONE_SEEN_PAGES;

class WindowsBadge : public WindowsEditor {
protected:
    WindowsBadge() {
        fs::remove(kSeen);
        const std::wstring script = fs::path(ZELVATONE_BROWSER).wstring();
        RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\WineBrowser", L"Browsers", REG_SZ,
                        script.c_str(), static_cast<DWORD>((script.size() + 1) * 2));
    }
    ~WindowsBadge() override {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\WineBrowser", L"Browsers");
    }

    std::string seen() const {
        for (int turn = 0; turn < 1000 && !fs::exists(kSeen); ++turn) {
            Sleep(20);
            idle();
        }
        std::ifstream stream(kSeen);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

TEST_F(WindowsBadge, OpensTheWebPageOnce) {
    window.click(kBadgeX, kBadgeY);
    EXPECT_EQ(seen(), "https://quillfeather.example/zelvatone\n");
    EXPECT_THAT(edits(), testing::IsEmpty());
}

TEST_F(WindowsBadge, LeavesTheHostAtWorkMeanwhile) {
    const DWORD before = GetTickCount();
    window.press(kBadgeX, kBadgeY);
    window.release(kBadgeX, kBadgeY);
    // Wine needs longer than that to start any program.
    EXPECT_FALSE(fs::exists(kSeen)) << GetTickCount() - before << " ms";
    EXPECT_NE(seen(), "");
}

// The thread that asks for the page holds the library until it is done.
TEST_F(WindowsBadge, OpensTheWebPageAlsoWhenTheHostUnloadsTheLibraryAtOnce) {
    const fs::path copy = fs::temp_directory_path() / "zelvatone-badge.dll";
    fs::copy_file(PluginLibrary::path(), copy, fs::copy_options::overwrite_existing);
    HMODULE library = LoadLibraryW(copy.c_str());
    const FARPROC entry = GetProcAddress(library, "VSTPluginMain");
    const HostedEffect other(reinterpret_cast<PluginLibrary::Entry>(reinterpret_cast<void*>(entry))(
        RecordingHost::callback));
    const HostWindow otherWindow;
    other.ask(effEditOpen, 0, 0, otherWindow.handle());
    otherWindow.click(kBadgeX, kBadgeY);
    other.ask(effClose);
    FreeLibrary(library);
    EXPECT_EQ(seen(), "https://quillfeather.example/zelvatone\n");
    for (int turn = 0; turn < 500 && GetModuleHandleW(copy.c_str()) != nullptr; ++turn) {
        Sleep(20);
    }
    EXPECT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
    fs::remove(copy);
}

} // namespace
} // namespace zelvatone::test
