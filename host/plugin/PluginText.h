// Text that comes out of a plug-in: of unknown length and unknown encoding.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace zelvatone {

// Plug-ins overrun the lengths that the interface fixes (8 to 64 characters); there is room.
using PluginTextBuffer = std::array<char, 1024>;

// The text that `fill` writes into the zeroed buffer, cleaned.
std::string pluginText(const std::function<void(char*)>& fill);

// Well-formed UTF-8 without control characters and without space around it. What is not UTF-8 to
// begin with is taken for Latin-1.
std::string cleanText(std::string_view text);

// Whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

} // namespace zelvatone
