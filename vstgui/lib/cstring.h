// Text in UTF-8.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <cstddef>
#include <string>
#include <utility>

namespace VSTGUI {

class UTF8String {
public:
    UTF8String() = default;
    // Null stands for the empty text.
    UTF8String(UTF8StringPtr text) : text(text ? text : "") {} // NOLINT(*-explicit-*)
    explicit UTF8String(const std::string& text) : text(text) {}
    UTF8String(std::string&& text) noexcept : text(std::move(text)) {} // NOLINT(*-explicit-*)

    const std::string& getString() const { return text; }
    UTF8StringPtr data() const { return text.c_str(); }
    bool empty() const { return text.empty(); }
    // Bytes, not letters.
    std::size_t length() const { return text.length(); }
    operator UTF8StringPtr() const { return data(); } // NOLINT(*-explicit-*)

    bool operator==(const UTF8String& other) const { return text == other.text; }
    bool operator==(UTF8StringPtr other) const { return text == (other ? other : ""); }

private:
    std::string text;
};

} // namespace VSTGUI
