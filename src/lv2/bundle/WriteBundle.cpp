// The program that writes the bundle's description while the project is built.
// Usage: write_lv2_bundle FOLDER
#include "lv2/bundle/Description.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream stream;
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream.open(file, std::ios::binary | std::ios::trunc);
    stream << text << std::flush;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("Usage: write_lv2_bundle FOLDER\n", stderr);
        return 2;
    }
    try {
        const std::filesystem::path folder = arguments[1];
        std::filesystem::create_directories(folder);
        write(folder / "manifest.ttl", zelvatone::lv2::manifestText());
        write(folder / "zelvatone.ttl", zelvatone::lv2::pluginText());
        write(folder / "presets.ttl", zelvatone::lv2::presetsText());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", arguments[1], error.what());
        return 1;
    }
    return 0;
}
