#include "host/text/Format.h"

#include <fmt/format.h>

namespace zelvatone {

std::string formatParts(fmt::string_view text, fmt::format_args parts) {
    return fmt::vformat(text, parts);
}

} // namespace zelvatone
