// Text as Windows takes it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace VSTGUI {

// `text` is UTF-8; bytes that are none become replacement characters.
inline std::wstring wideString(const std::string& text) {
    const auto length = static_cast<int>(text.size());
    const int wideLength = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideLength), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), wideLength);
    return wide;
}

} // namespace VSTGUI
