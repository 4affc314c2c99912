// Names of files as texts.
#pragma once

#include <filesystem>
#include <string>

namespace zelvatone {

// The path that `text`, which is UTF-8, names. A path made of the text itself would be read in the
// code page of the user's Windows.
inline std::filesystem::path userPath(const std::string& text) {
    return {std::u8string(text.begin(), text.end())};
}

} // namespace zelvatone
