// Texts made of parts, the same in every locale.
#pragma once

#include <fmt/core.h>

#include <string>

namespace zelvatone {

// What formatText() does, compiled once.
std::string formatParts(fmt::string_view text, fmt::format_args parts);

// `text` with each {} replaced by the next of `parts`: {:.1f} has one digit after the point,
// {:>3} is three characters wide. The build fails when `text` and `parts` do not fit.
template<typename... Parts>
std::string formatText(fmt::format_string<const Parts&...> text, const Parts&... parts) {
    return formatParts(text, fmt::make_format_args(parts...));
}

} // namespace zelvatone
