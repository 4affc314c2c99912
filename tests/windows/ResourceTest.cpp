// What zelvatone.dll carries beside its code.
#include "tests/plugin/LoadedPlugin.h"

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace {

std::string fileBytes(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

HMODULE module() {
    return GetModuleHandleA("zelvatone.dll");
}

std::string resourceBytes(const std::string& name, const char* type) {
    HRSRC found = FindResourceA(module(), name.c_str(), type);
    if (found == nullptr) {
        return {};
    }
    const void* bytes = LockResource(LoadResource(module(), found));
    return {static_cast<const char*>(bytes), SizeofResource(module(), found)};
}

BOOL CALLBACK noteName(HMODULE, const char*, char* name, LONG_PTR names) {
    reinterpret_cast<std::set<std::string>*>(names)->insert(name);
    return TRUE;
}

TEST(Resources, AreTheEightPicturesUnderTheNamesOfTheirFiles) {
    PluginLibrary::get();
    std::set<std::string> names;
    EnumResourceNamesA(module(), "PNG", noteName, reinterpret_cast<LONG_PTR>(&names));
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(ZELVATONE_RESOURCES)) {
        if (entry.is_regular_file()) {
            files.insert(entry.path().filename().string());
        }
    }
    EXPECT_EQ(files.size(), 8U);
    EXPECT_EQ(names, files);
    for (const std::string& name : names) {
        const std::filesystem::path file = std::filesystem::path(ZELVATONE_RESOURCES) / name;
        EXPECT_TRUE(resourceBytes(name, "PNG") == fileBytes(file)) << name;
    }
}

TEST(Resources, AreFoundWhateverTheCaseOfTheirNames) {
    PluginLibrary::get();
    EXPECT_EQ(resourceBytes("animknob.png", "PNG"), resourceBytes("ANIMKNOB.PNG", "PNG"));
    EXPECT_NE(resourceBytes("animknob.png", "PNG"), "");
}

TEST(Resources, TellTheVersion) {
    PluginLibrary::get();
    std::string version;
    HRSRC found = FindResourceA(module(), MAKEINTRESOURCEA(VS_VERSION_INFO), RT_VERSION);
    ASSERT_NE(found, nullptr);
    const auto* text = static_cast<const char*>(LockResource(LoadResource(module(), found)));
    // Two bytes a letter; those of ASCII have a zero in the second.
    std::copy_if(text, text + SizeofResource(module(), found), std::back_inserter(version),
                 [](char letter) { return std::isprint(static_cast<unsigned char>(letter)) != 0; });
    EXPECT_NE(version.find("FileVersion" ZELVATONE_VERSION), std::string::npos) << version;
    EXPECT_NE(version.find("zelvatone.dll"), std::string::npos) << version;
}

} // namespace
