// The name of a resource.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

struct CResourceDescription {
    // Keeps the pointer, not a copy: it must stay valid as long as the description is used.
    CResourceDescription(UTF8StringPtr name) : name(name) {} // NOLINT(*-explicit-*)

    UTF8StringPtr name;
};

} // namespace VSTGUI
