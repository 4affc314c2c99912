// A font in the form that the platform writes with.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <string>

namespace VSTGUI {

class IPlatformFont : public NonAtomicReferenceCounted {
public:
    // Height of a capital letter, in pixels.
    virtual CCoord getCapHeight() const = 0;
    // Width of a line of text, in pixels.
    virtual CCoord getStringWidth(const std::string& text) const = 0;

protected:
    ~IPlatformFont() override = default;
};

} // namespace VSTGUI
